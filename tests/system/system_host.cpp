#include "system/system_host.h"

#include <boost/json/parse.hpp>
#include <fstream>

namespace host {

namespace {

std::string textOf(const boost::json::value& value) { return std::string(value.as_string()); }

}  // namespace

void SystemHost::serve(std::map<std::string, std::string> environment,
                       const std::vector<std::string>& arguments) {
  environment.emplace("MIRN_REGISTRY", MIRN_TEST_REGISTRY);
  environment.emplace("VEXL2_EVENT_WAIT_CAP", "50");  // a stop waits for the end of one wait
  environment.emplace("VEXL2_STATE", (m_folder / "machine.json").string());
  std::vector<std::string> words{"--module", MIRN_TEST_MODULE, "--port",
                                 "0",        "--token-file",   (m_folder / "token").string()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  m_host = std::make_unique<HostProcess>(words, environment);
  ASSERT_TRUE(m_host->awaitServing()) << m_host->errors();
}

void SystemHost::stop() { EXPECT_EQ(m_host->stop(), 0) << m_host->errors(); }

SystemHost::Reply SystemHost::request(const std::string& method, const std::string& target,
                                      const std::string& body) {
  HttpConnection connection(m_host->port());
  const HttpConnection::Response response =
      connection.exchange(HttpConnection::make(method, "/api/v1/" + target, m_host->token(), body));
  Reply reply{response.result_int(), nullptr, std::string(response[boost::beast::http::field::content_type])};
  if (!response.body().empty()) reply.body = boost::json::parse(response.body());
  return reply;
}

boost::json::array SystemHost::list(const std::string& target) {
  const Reply reply = get(target);
  EXPECT_EQ(reply.status, 200u) << target << ": " << reply.body;
  return reply.body.as_array();
}

boost::json::object SystemHost::find(const std::string& target, const std::string& key,
                                     const std::string& value) {
  for (const boost::json::value& element : list(target)) {
    if (textOf(element.at(key)) == value) return element.as_object();
  }
  ADD_FAILURE() << "no " << key << " " << value << " in " << target;
  return {};
}

std::vector<std::string> textsUnder(const boost::json::array& list, const std::string& key) {
  std::vector<std::string> texts;
  for (const boost::json::value& element : list) texts.push_back(textOf(element.at(key)));
  return texts;
}

}  // namespace host
