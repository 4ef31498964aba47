#include <boost/json/parse.hpp>
#include <fstream>

#include "host/service/local_exchange.h"
#include "host/service/test_host.h"

namespace host {

namespace {

class HostSessionTest : public TestHost {
 protected:
  void SetUp() override { serve({"--unix-socket", file("host.sock")}); }

  /// The answer to a request for a code over the Unix socket.
  std::string askForCode(const std::string& body, const std::string& field = "") {
    return localExchange(file("host.sock"), "POST /api/v7/session/codes HTTP/1.1\r\nHost: localhost\r\n" +
                                                field + "Connection: close\r\nContent-Length: " +
                                                std::to_string(body.size()) + "\r\n\r\n" + body);
  }
  static boost::json::value bodyIn(const std::string& answer) {
    return boost::json::parse(answer.substr(answer.find("\r\n\r\n") + 4));
  }
  std::string code(const std::string& body = "{}") {
    return std::string(bodyIn(askForCode(body)).at("code").as_string());
  }
  Response signIn(const std::string& code) {
    return connect().exchange(
        HttpConnection::make("POST", "/api/v7/session", "", "{\"code\": \"" + code + "\"}"));
  }
  unsigned status(const std::string& method, const std::string& target, const std::string& token) {
    return connect().exchange(HttpConnection::make(method, target, token)).result_int();
  }
};

TEST_F(HostSessionTest, BeginsWithACodeAndEndsByItsToken) {
  const Response response = signIn(code());
  ASSERT_EQ(response.result_int(), 201U) << response.body();
  EXPECT_EQ(bodyOf(response).at("role"), "administer");
  EXPECT_EQ(bodyOf(response).at("lifeSeconds"), 43200);
  EXPECT_EQ(response["Set-Cookie"], "");
  const std::string token(bodyOf(response).at("token").as_string());
  EXPECT_EQ(status("GET", "/api/v7", token), 200U);
  EXPECT_EQ(status("DELETE", "/api/v7/session", token), 204U);
  EXPECT_EQ(status("GET", "/api/v7", token), 401U);
}

TEST_F(HostSessionTest, TellsWhoAsksAndInWhichRole) {
  const std::string token(bodyOf(signIn(code("{\"role\": \"observe\"}"))).at("token").as_string());
  const Response response = connect().exchange(HttpConnection::make("GET", "/api/v7/session", token));
  ASSERT_EQ(response.result_int(), 200U) << response.body();
  EXPECT_EQ(bodyOf(response).at("role"), "observe");
  EXPECT_FALSE(bodyOf(response).at("name").as_string().empty());
  const Response first = connect().exchange(HttpConnection::make("GET", "/api/v7/session", host().token()));
  EXPECT_EQ(bodyOf(first).at("role"), "administer");
  EXPECT_EQ(bodyOf(first).at("name"), "first");
  EXPECT_EQ(status("GET", "/api/v7/session", ""), 401U);
}

TEST_F(HostSessionTest, EndsWithTheProcess) {
  const std::string token(bodyOf(signIn(code())).at("token").as_string());
  EXPECT_EQ(host().stop(), 0);
  EXPECT_EQ(host().output().find(token), std::string::npos);
  serve();
  EXPECT_EQ(status("GET", "/api/v7", token), 401U);
}

TEST_F(HostSessionTest, HasTheRoleOfItsCode) {
  const Response response = signIn(code("{\"role\": \"observe\"}"));
  EXPECT_EQ(bodyOf(response).at("role"), "observe");
  const std::string token(bodyOf(response).at("token").as_string());
  EXPECT_EQ(status("GET", "/api/v7", token), 200U);
}

TEST_F(HostSessionTest, IsRefusedInTheSameWayForEachWrongCode) {
  const std::string used = code();
  EXPECT_EQ(signIn(used).result_int(), 201U);
  const Response second = signIn(used);
  const Response wrong = signIn("wrong");
  EXPECT_EQ(second.result_int(), 401U);
  EXPECT_EQ(wrong.result_int(), 401U);
  EXPECT_EQ(second.body(), wrong.body());
}

TEST_F(HostSessionTest, TakesItsCodeInTheBodyAlone) {
  const auto answer = connect().exchange(HttpConnection::make(
      "POST", "/api/v7/session?access_token=" + host().token(), "", "{\"code\": \"" + code() + "\"}"));
  EXPECT_EQ(answer.result_int(), 400U);
  for (const char* const body : {"{}", "[]", "{\"code\": 1}", "{\"code\": {}}", "nonsense"}) {
    const auto refused = connect().exchange(HttpConnection::make("POST", "/api/v7/session", "", body));
    EXPECT_EQ(refused.result_int(), 400U) << body;
  }
}

TEST_F(HostSessionTest, CodesAreForUsersOfTheMachine) {
  EXPECT_EQ(send("POST", "/api/v7/session/codes", "{}").result_int(), 403U);
  EXPECT_EQ(connect().exchange(HttpConnection::make("POST", "/api/v7/session/codes", "", "{}")).result_int(),
            401U);
  EXPECT_EQ(askForCode("{}", "Authorization: Bearer " + host().token() + "\r\n").substr(9, 3), "403");
  EXPECT_EQ(askForCode("{\"role\": \"root\"}").substr(9, 3), "400");
}

TEST_F(HostSessionTest, ACodeComesWithItsAddress) {
  const auto body = bodyIn(askForCode("{}"));
  EXPECT_EQ(std::string(body.at("url").as_string()),
            "http://127.0.0.1:" + std::to_string(host().port()) +
                "/#code=" + std::string(body.at("code").as_string()));
}

TEST_F(HostSessionTest, TheProgramMakesAnAddress) {
  HostProcess program(
      {"sign-in", "--unix-socket", file("host.sock"), "--api-version", "v7", "--role", "operate"});
  ASSERT_EQ(program.awaitExit(), 0) << program.errors();
  const std::string address = program.output();
  const std::string start = "http://127.0.0.1:" + std::to_string(host().port()) + "/#code=";
  ASSERT_EQ(address.rfind(start, 0), 0U) << address;
  const Response response = signIn(address.substr(start.size(), address.size() - start.size() - 1));
  EXPECT_EQ(bodyOf(response).at("role"), "operate");
}

TEST_F(HostSessionTest, TheProgramLooksIntoTheConfigurationForTheSocket) {
  std::ofstream(file("host.conf")) << "unix-socket = " << file("host.sock") << '\n';
  HostProcess program({"sign-in", "--config", file("host.conf"), "--api-version", "v7"});
  EXPECT_EQ(program.awaitExit(), 0) << program.errors();
}

TEST_F(HostSessionTest, TheProgramSaysThatTheConfigurationHasNoSocket) {
  std::ofstream(file("host.conf")) << "unix-socket = off\n";
  HostProcess program({"sign-in", "--config", file("host.conf")});
  EXPECT_EQ(program.awaitExit(), 2);
  EXPECT_NE(program.errors().find("turns the Unix socket off"), std::string::npos) << program.errors();
}

TEST_F(HostSessionTest, TheProgramTellsWhatItAsksForWithoutBeingTold) {
  HostProcess program({"sign-in", "--help"});
  ASSERT_EQ(program.awaitExit(), 0) << program.errors();
  EXPECT_NE(program.output().find("--role ROLE (=administer)"), std::string::npos) << program.output();
  EXPECT_NE(program.output().find("--api-version WORD (=v1)"), std::string::npos) << program.output();
}

TEST_F(HostSessionTest, TheProgramSaysWhyItMadeNone) {
  HostProcess program({"sign-in", "--unix-socket", file("other.sock")});
  EXPECT_EQ(program.awaitExit(), 1);
  EXPECT_NE(program.errors().find(file("other.sock")), std::string::npos);
  HostProcess refused({"sign-in", "--unix-socket", file("host.sock"), "--api-version", "v8"});
  EXPECT_EQ(refused.awaitExit(), 1);
  EXPECT_NE(refused.errors().find("404"), std::string::npos);
}

}  // namespace

}  // namespace host
