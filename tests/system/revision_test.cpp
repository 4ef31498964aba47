#include <gtest/gtest.h>

#include <signal.h>

#include <algorithm>
#include <boost/beast/http/write.hpp>
#include <boost/json/parse.hpp>
#include <chrono>
#include <filesystem>
#include <future>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <thread>

#include "host/service/tls_client.h"
#include "support/test_certificate.h"
#include "system/system_host.h"

namespace host {

namespace {

namespace http = boost::beast::http;
using Clock = std::chrono::steady_clock;
using Fields = std::map<std::string, std::string>;
using Response = HttpConnection::Response;

constexpr char kVolumes[] = "/api/v1/mirn/volumes";
constexpr char kDevices[] = "/api/v1/mirn/enddevices";

void ask(HttpConnection& connection, HttpConnection::Request request) {
  request.prepare_payload();
  connection.send(request);
}

std::string textOf(const Response& response, const std::string& field) {
  return std::string(response[field]);
}

/// The product over a machine whose clock stands, so that nothing changes unless a test does it. All who ask
/// at once have a place.
class AnswersByRevision : public SystemHost {
 protected:
  void SetUp() override {
    serve({{"VEXL2_CLOCK_SPEED", "0"}},
          {"--simulator-controls", "--max-waiting", "2000", "--max-waiting-of-one", "2000"});
  }
  void TearDown() override { stop(); }

  HttpConnection::Request made(const std::string& method, const std::string& target, const Fields& fields,
                               const std::string& body = "") {
    auto request = HttpConnection::make(method, target, m_host->token(), body);
    for (const auto& [name, value] : fields) request.set(name, value);
    return request;
  }

  Response exchange(const std::string& method, const std::string& target, const Fields& fields = {},
                    const std::string& body = "") {
    HttpConnection connection(m_host->port());
    ask(connection, made(method, target, fields, body));
    return connection.receive(method);
  }

  Response whole(const std::string& target) { return exchange("GET", target); }

  std::string volume() { return textsUnder(list("mirn/volumes"), "id").at(0); }

  Response rename(const std::string& name, const Fields& fields = {}, const std::string& query = "") {
    return exchange("PUT", std::string(kVolumes) + '/' + m_volume + "/name" + query, fields,
                    R"({"name": ")" + name + R"("})");
  }

  std::string m_volume;
};

TEST_F(AnswersByRevision, AnAnswerThatIsKnownIsNotSentAgain) {
  const Response first = whole(kVolumes);
  const std::string tag = textOf(first, "ETag");
  ASSERT_EQ(tag.size(), 34U) << tag;
  EXPECT_EQ(textOf(first, "Vary"), "Accept-Encoding");
  const Response known = exchange("GET", kVolumes, {{"If-None-Match", "\"x\", W/" + tag}});
  EXPECT_EQ(known.result_int(), 304U);
  EXPECT_EQ(known.body(), "");
  EXPECT_EQ(known.find(http::field::content_length), known.end());
  for (const char* const field : {"ETag", "Vary", "Mirn-Structure"}) {
    EXPECT_EQ(textOf(known, field), textOf(first, field)) << field;
  }
  EXPECT_EQ(exchange("GET", kVolumes, {{"If-None-Match", "*"}}).result_int(), 304U);
  EXPECT_EQ(exchange("HEAD", kVolumes, {{"If-None-Match", tag}}).result_int(), 304U);
  EXPECT_EQ(exchange("GET", kVolumes, {{"If-None-Match", "\"x\""}}).body(), first.body());
  const Response head = exchange("HEAD", kVolumes);
  EXPECT_EQ(textOf(head, "ETag"), tag);
  EXPECT_EQ(textOf(head, "Content-Length"), std::to_string(first.body().size()));
}

TEST_F(AnswersByRevision, AReadMayInsistOnWhatItKnows) {
  const std::string tag = textOf(whole(kVolumes), "ETag");
  EXPECT_EQ(exchange("GET", kVolumes, {{"If-Match", tag}}).result_int(), 200U);
  EXPECT_EQ(exchange("GET", kVolumes, {{"If-Match", "\"x\""}}).result_int(), 412U);
  EXPECT_EQ(exchange("GET", kVolumes, {{"If-Match", "W/" + tag}}).result_int(), 412U) << "compared strongly";
}

TEST_F(AnswersByRevision, APackedAnswerIsAnotherForm) {
  const Response plain = whole(kDevices);
  const Response packed = exchange("GET", kDevices, {{"Accept-Encoding", "gzip"}});
  EXPECT_EQ(textOf(packed, "Content-Encoding"), "gzip");
  EXPECT_LT(packed.body().size(), plain.body().size() / 2);
  EXPECT_NE(textOf(packed, "ETag"), textOf(plain, "ETag"));
  EXPECT_EQ(packed.body(), exchange("GET", kDevices, {{"Accept-Encoding", "gzip"}}).body());
  const Fields known{{"Accept-Encoding", "gzip"}, {"If-None-Match", textOf(packed, "ETag")}};
  EXPECT_EQ(exchange("GET", kDevices, known).result_int(), 304U);
  EXPECT_EQ(exchange("GET", kDevices, {{"If-None-Match", textOf(packed, "ETag")}}).result_int(), 200U);
  EXPECT_EQ(exchange("GET", kDevices, {{"Accept-Encoding", "gzip, identity;q=1, br"}}).body().size(),
            packed.body().size());
  EXPECT_EQ(exchange("GET", kDevices, {{"Accept-Encoding", "gzip;q=0"}}).body(), plain.body());
  EXPECT_EQ(exchange("GET", kDevices, {{"Accept-Encoding", "identity;q=0"}}).result_int(), 406U);
}

/// The path in which one writer renames, with what the first answer told.
class ChangesOfAKnownMachine : public AnswersByRevision {
 protected:
  void SetUp() override {
    AnswersByRevision::SetUp();
    m_volume = volume();
    m_structure = textOf(whole(kVolumes), "Mirn-Structure");
  }

  std::string m_structure;
};

TEST_F(ChangesOfAKnownMachine, OfAHundredWritersOneWins) {
  std::vector<std::future<unsigned>> writers;
  for (int i = 0; i < 100; ++i) {
    writers.push_back(std::async(std::launch::async, [this, i] {
      return rename("Name" + std::to_string(i), {{"If-Match", m_structure}}).result_int();
    }));
  }
  std::map<unsigned, int> counts;
  for (auto& writer : writers) ++counts[writer.get()];
  EXPECT_EQ(counts, (std::map<unsigned, int>{{200U, 1}, {412U, 99}}));
}

TEST_F(ChangesOfAKnownMachine, AStaleOneIsRefusedInThePluginsWords) {
  EXPECT_EQ(rename("One", {{"If-Match", m_structure}}).result_int(), 200U);
  const Response stale = rename("Two", {{"If-Match", m_structure}});
  EXPECT_EQ(stale.result_int(), 412U);
  EXPECT_NE(stale.body().find("The machine has changed meanwhile"), std::string::npos);
  EXPECT_EQ(rename("Three", {{"If-Match", textOf(whole(kVolumes), "Mirn-Structure")}}).result_int(), 200U);
}

TEST_F(ChangesOfAKnownMachine, AnotherFormIsRefused) {
  for (const std::string form :
       {"*", "\"x\"", "0123456789abcdef.1", "\"0123456789abcdef.\"", "\"0123456789abcdef.1x\"",
        "W/\"0123456789abcdef.1\"", "\"0123456789abcdef.1\", \"0123456789abcdef.2\"",
        "\"0123456789abcdef.18446744073709551616\""}) {
    EXPECT_EQ(rename("New", {{"If-Match", form}}).result_int(), 400U) << form;
  }
}

TEST_F(ChangesOfAKnownMachine, ADryRunChangesNothing) {
  const std::string before = whole(kVolumes).body();
  const Response plan = rename("Tried", {}, "?dryRun=true");
  EXPECT_EQ(plan.result_int(), 200U);
  const auto document = boost::json::parse(plan.body());
  EXPECT_TRUE(document.at("operation").is_string());
  EXPECT_EQ(document.at("libraryDecides"), true);
  EXPECT_EQ(whole(kVolumes).body(), before);
  EXPECT_EQ(rename("Done", {}, "?dryRun=false").result_int(), 200U);
  EXPECT_NE(whole(kVolumes).body(), before);
}

TEST_F(ChangesOfAKnownMachine, ADryRunTellsThePlanOfWhatCallsOneFunction) {
  struct Change {
    const char* method;
    std::string path;
    const char* body;
    const char* operation;  ///< Of the library; null where none is called.
  };
  const auto disks = list("mirn/enddevices");
  const auto plugged = std::find_if(disks.begin(), disks.end(), [](const boost::json::value& disk) {
    const boost::json::value* const isHotplug = disk.as_object().if_contains("managedHotplug");
    return isHotplug != nullptr && *isHotplug == true;
  });
  ASSERT_NE(plugged, disks.end());
  const std::string disk(plugged->at("id").as_string());
  const std::string port = textsUnder(list("mirn/ports"), "id").at(0);
  const std::string before = whole(kDevices).body();
  for (const Change& change :
       {Change{"DELETE", "volumes/" + m_volume, "", "VexVolumeDelete"},
        Change{"DELETE", "disks/" + disk, "", "VexPhyRemove"},
        Change{"PUT", "ports/" + port + "/locate", R"({"state": "ENABLED"})", "VexPortLocate"},
        Change{"POST", "rescan", "", "VexRescan"},
        Change{"PUT", "config", R"({"locate_timeout": 20})", nullptr}}) {
    const Response plan =
        exchange(change.method, "/api/v1/mirn/" + change.path + "?dryRun=true", {}, change.body);
    ASSERT_EQ(plan.result_int(), 200U) << change.path << plan.body();
    const auto operation = boost::json::parse(plan.body()).at("operation");
    if (change.operation == nullptr) {
      EXPECT_TRUE(operation.is_null()) << change.path;
    } else {
      EXPECT_EQ(operation, change.operation);
    }
  }
  EXPECT_EQ(whole(kDevices).body(), before);
}

TEST_F(ChangesOfAKnownMachine, APlanTellsTheStructureThatItHoldsFor) {
  const Response plan = rename("Planned", {}, "?dryRun=true");
  const std::string structure(boost::json::parse(plan.body()).at("structure").as_string());
  EXPECT_EQ(structure, m_structure);
  EXPECT_EQ(rename("Planned", {{"If-Match", structure}}).result_int(), 200U);
  EXPECT_EQ(rename("Later", {{"If-Match", structure}}).result_int(), 412U);
}

TEST_F(ChangesOfAKnownMachine, ADryRunIsRefusedAsTheDeedWouldBe) {
  const std::string tooLong(300, 'x');
  const Response tried = rename(tooLong, {}, "?dryRun=true");
  const Response done = rename(tooLong);
  EXPECT_GE(done.result_int(), 400U);
  EXPECT_EQ(tried.result_int(), done.result_int());
  EXPECT_EQ(tried.body(), done.body());
  EXPECT_EQ(rename("One").result_int(), 200U);
  EXPECT_EQ(rename("Two", {{"If-Match", m_structure}}, "?dryRun=true").result_int(), 412U);
  EXPECT_EQ(rename("Two", {}, "?dryRun=yes").result_int(), 400U);
  EXPECT_EQ(exchange("GET", std::string(kVolumes) + "?dryRun=1").result_int(), 400U);
  EXPECT_EQ(exchange("GET", std::string(kVolumes) + "?dryRun=false").result_int(), 200U);
  const Response read = exchange("GET", std::string(kVolumes) + "?dryRun=true");
  EXPECT_TRUE(boost::json::parse(read.body()).at("operation").is_null());
}

TEST_F(ChangesOfAKnownMachine, ALongPollIsWokenByAChange) {
  const Response known = whole(kVolumes);
  HttpConnection waiting(m_host->port());
  ask(waiting, made("GET", kVolumes, {{"If-None-Match", textOf(known, "ETag")}, {"Prefer", "wait=600"}}));
  std::this_thread::sleep_for(std::chrono::milliseconds(200));  // it may come before the change as well
  ASSERT_EQ(rename("Woken").result_int(), 200U);
  const auto changed = Clock::now();
  const Response woken = waiting.receive();
  const auto late = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - changed);
  RecordProperty("milliseconds", static_cast<int>(late.count()));
  std::cout << "woken " << late.count() << " ms after the change's answer\n";
  EXPECT_LT(late, std::chrono::seconds(5)) << "by the change, not by the end of the time";
  EXPECT_EQ(woken.result_int(), 200U);
  EXPECT_EQ(textOf(woken, "Preference-Applied"), "wait=60");
  EXPECT_EQ(woken.body(), whole(kVolumes).body());
  EXPECT_EQ(waiting.get(kVolumes, m_host->token()).result_int(), 200U) << "the connection is still in order";
}

TEST_F(ChangesOfAKnownMachine, ALongPollEndsWithItsTime) {
  const Fields fields{{"If-None-Match", textOf(whole(kVolumes), "ETag")},
                      {"Prefer", "respond-async, wait=1"}};
  const auto begun = Clock::now();
  HttpConnection waiting(m_host->port());
  for (int i = 0; i < 2; ++i) {
    ask(waiting, made("GET", kVolumes, fields));
    const Response over = waiting.receive();
    EXPECT_EQ(over.result_int(), 304U);
    EXPECT_EQ(textOf(over, "Preference-Applied"), "wait=1");
  }
  EXPECT_GE(Clock::now() - begun, std::chrono::seconds(2));
}

/// A request as it goes over the wire, for what no client of the tests sends by itself.
std::string bytesOf(HttpConnection::Request request) {
  request.prepare_payload();
  std::ostringstream bytes;
  bytes << request;
  return bytes.str();
}

TEST_F(ChangesOfAKnownMachine, WhatIsAskedBehindALongPollIsAnsweredBehindIt) {
  const Fields waits{{"If-None-Match", textOf(whole(kVolumes), "ETag")}, {"Prefer", "wait=60"}};
  HttpConnection waiting(m_host->port());
  waiting.sendBytes(bytesOf(made("GET", kVolumes, waits)) + bytesOf(made("GET", kDevices, {})));
  ASSERT_EQ(rename("Woken").result_int(), 200U);
  EXPECT_EQ(waiting.receive().body(), whole(kVolumes).body());
  EXPECT_EQ(waiting.receive().body(), whole(kDevices).body());
}

TEST_F(ChangesOfAKnownMachine, BytesBehindALongPollThatAreNoRequestAreRefusedAfterIt) {
  const Fields waits{{"If-None-Match", textOf(whole(kVolumes), "ETag")}, {"Prefer", "wait=1"}};
  HttpConnection waiting(m_host->port());
  waiting.sendBytes(bytesOf(made("GET", kVolumes, waits)) + "nonsense\r\n\r\n");
  EXPECT_EQ(waiting.receive().result_int(), 304U);
  EXPECT_EQ(waiting.receive().result_int(), 400U);
  EXPECT_EQ(waiting.receiveToEnd(), "");
}

TEST_F(ChangesOfAKnownMachine, AStopEndsALongPollAtOnce) {
  HttpConnection waiting(m_host->port());
  ask(waiting,
      made("GET", kVolumes, {{"If-None-Match", textOf(whole(kVolumes), "ETag")}, {"Prefer", "wait=60"}}));
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  const auto begun = Clock::now();
  m_host->signal(SIGTERM);
  const Response last = waiting.receive();
  EXPECT_EQ(last.result_int(), 304U);
  EXPECT_FALSE(last.keep_alive());
  EXPECT_EQ(m_host->awaitExit(), 0);
  EXPECT_LT(Clock::now() - begun, std::chrono::seconds(20));
}

std::size_t threadsOf(pid_t process) {
  const std::filesystem::directory_iterator threads("/proc/" + std::to_string(process) + "/task");
  return static_cast<std::size_t>(std::distance(begin(threads), end(threads)));
}

using Waiting = std::vector<std::unique_ptr<HttpConnection>>;

/// Takes the first that is answered out of those who wait.
std::unique_ptr<HttpConnection> firstAnswered(Waiting& waiting) {
  const auto deadline = Clock::now() + std::chrono::seconds(50);
  while (Clock::now() < deadline) {
    const auto found = std::find_if(waiting.begin(), waiting.end(),
                                    [](const auto& connection) { return connection->hasBytes(); });
    if (found != waiting.end()) {
      auto answered = std::move(*found);
      waiting.erase(found);
      return answered;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return nullptr;
}

TEST_F(ChangesOfAKnownMachine, AThousandWaitWithoutAThreadEach) {
  const std::string tag = textOf(whole(kVolumes), "ETag");
  const auto waits = [&](const std::string& wait) {
    return made("GET", kVolumes, {{"If-None-Match", tag}, {"Prefer", wait}});
  };
  const std::size_t before = threadsOf(m_host->processId());
  Waiting waiting;
  for (int i = 0; i < 1001; ++i) {
    waiting.push_back(std::make_unique<HttpConnection>(m_host->port()));
    ask(*waiting.back(), waits("wait=60"));
  }
  const auto tooMuch = firstAnswered(waiting);
  ASSERT_NE(tooMuch, nullptr);
  EXPECT_EQ(tooMuch->receive().result_int(), 503U);
  EXPECT_EQ(threadsOf(m_host->processId()), before);
  waiting.pop_back();  // one that leaves gives its place away
  unsigned status = 0;
  for (int i = 0; i < 200 && status != 304; ++i) {
    ask(*tooMuch, waits("wait=1"));
    status = tooMuch->receive().result_int();
  }
  EXPECT_EQ(status, 304U);
  ASSERT_EQ(rename("ForAll").result_int(), 200U);
  const std::string now = whole(kVolumes).body();
  for (std::size_t i = 0; i < waiting.size(); ++i) ASSERT_EQ(waiting[i]->receive().body(), now) << i;
}

/// A target that is asked for anew each time is never answered from what is kept: a body is not.
TEST_F(ChangesOfAKnownMachine, KeptAndFreshAnswersAreTheSameBytes) {
  std::mt19937 random(20261122);
  const std::vector<std::string> targets{"/api/v1/mirn/volumes", "/api/v1/mirn/enddevices",
                                         "/api/v1/mirn/arrays",  "/api/v1/mirn/controllers",
                                         "/api/v1/mirn/state",   "/api/v1/mirn/ports"};
  std::map<std::string, std::string> bytesOf;  // by target and ETag
  HttpConnection client(m_host->port());
  for (int step = 0; step < 300; ++step) {
    if (random() % 4 == 0) rename("Step" + std::to_string(random() % 5));
    const std::string& target = targets[random() % targets.size()];
    const Response kept = client.exchange(made("GET", target, {}));
    const Response fresh = client.exchange(made("GET", target, {}, "{}"));
    ASSERT_EQ(kept.result_int(), 200U) << target;
    ASSERT_EQ(kept.body(), fresh.body()) << target << " at step " << step;
    ASSERT_EQ(textOf(kept, "ETag"), textOf(fresh, "ETag"));
    const auto [known, isNew] = bytesOf.emplace(target + textOf(kept, "ETag"), kept.body());
    EXPECT_EQ(known->second, kept.body());
  }
  std::set<std::string> distinct;
  for (const auto& [name, bytes] : bytesOf) EXPECT_TRUE(distinct.insert(bytes).second) << name;
}

/// The same over TLS.
class AnswersOverTls : public AnswersByRevision {
 protected:
  void SetUp() override {
    std::ofstream((m_folder / "certificate.pem").string()) << m_server.certificate();
    std::ofstream((m_folder / "key.pem").string()) << m_server.key();
    serve({{"VEXL2_CLOCK_SPEED", "0"}}, {"--tls-certificate", (m_folder / "certificate.pem").string(),
                                         "--tls-key", (m_folder / "key.pem").string()});
  }

  const TestCertificate m_authority{"authority"};
  const TestCertificate m_server{"server", m_authority};
};

/// The last answer's body, behind its head.
std::string received(TlsClient& client, std::string& head) {
  head = client.receive("\r\n\r\n");
  const std::size_t length = head.find("Content-Length: ");
  if (length == std::string::npos) return "";
  return client.receiveExactly(std::stoul(head.substr(length + 16)));
}

TEST_F(AnswersOverTls, ALongPollIsWokenByAChange) {
  TlsClient waiting(m_authority);
  TlsClient other(m_authority);
  ASSERT_TRUE(waiting.connect(m_host->port()));
  ASSERT_TRUE(other.connect(m_host->port()));
  std::string head;
  waiting.send(bytesOf(made("GET", kVolumes, {})));
  const std::string before = received(waiting, head);
  ASSERT_EQ(head.rfind("HTTP/1.1 200 ", 0), 0U) << head;
  const std::string tag = head.substr(head.find("ETag: ") + 6, 34);
  waiting.send(bytesOf(made("GET", kVolumes, {{"If-None-Match", tag}, {"Prefer", "wait=60"}})));
  const std::string volume(boost::json::parse(before).at(0).at("id").as_string());
  other.send(
      bytesOf(made("PUT", std::string(kVolumes) + '/' + volume + "/name", {}, R"({"name": "Woken"})")));
  received(other, head);
  ASSERT_EQ(head.rfind("HTTP/1.1 200 ", 0), 0U) << head;
  const std::string woken = received(waiting, head);
  EXPECT_EQ(head.rfind("HTTP/1.1 200 ", 0), 0U) << head;
  EXPECT_NE(head.find("Preference-Applied: wait=60"), std::string::npos) << head;
  EXPECT_NE(woken.find("\"Woken\""), std::string::npos);
}

}  // namespace

}  // namespace host
