#include "bundle/bundle_source.h"

#include <gmock/gmock.h>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include "host/api/mock_plugin.h"
#include "host/bundle/unpacked.h"
#include "host/revisions/watched_machine.h"

namespace host {

namespace {

using testing::ElementsAre;
using testing::NiceMock;

class BundleSourceTest : public testing::Test {
 protected:
  using Handler = std::function<Answer(const Call&)>;

  BundleSourceTest() {
    m_subject->watched = &m_machine;
    m_subject->hostVersion = "1.2.3.4";
    m_subject->folders = {"/home/ann"};
  }

  /// A read of the plug-in, or one of the host's own with pages.
  void add(const std::string& name, const Handler& handler, bool isOfPlugin = true) {
    ApiEndpoint endpoint;
    endpoint.operation = name;
    endpoint.method = "GET";
    endpoint.path = L"api/v1/" + std::wstring(name.begin(), name.end());
    endpoint.handle = [handler](const Call& call, const std::string&) { return handler(call); };
    if (!isOfPlugin) {
      endpoint.document.emplace();
      endpoint.document->parameters = {{"cursor", false, {}, {}}};
    }
    m_table.add(std::move(endpoint));
  }

  /// The files of a whole bundle.
  std::map<std::string, std::string> files() {
    m_subject->operations.learn(m_table);
    auto call = std::make_shared<Call>();
    call->identity = {"ann", Role::kAdminister};
    BundleSource source(m_places->take(), m_subject, call, 1'700'000'000'250, m_isMasked);
    std::string packed;
    AnswerPart part;
    do {
      part = source.take();
      packed += part.bytes;
    } while (part.next == AnswerPart::Next::kAtOnce);
    EXPECT_EQ(part.next, AnswerPart::Next::kNone);
    auto files = unpackedFiles(unpackedBytes(packed, 1'000'000));
    m_manifest = boost::json::parse(files["manifest.json"]);
    return files;
  }

  std::string told(const char* member) const { return boost::json::serialize(m_manifest.at(member)); }

  NiceMock<MockPlugin> m_plugin;
  WatchedMachine m_machine;
  std::shared_ptr<BundleSubject> m_subject = std::make_shared<BundleSubject>(BundleSubject{m_plugin});
  std::shared_ptr<Places> m_places = std::make_shared<Places>(1);
  EndpointTable m_table;
  bool m_isMasked = false;
  boost::json::value m_manifest;
};

TEST_F(BundleSourceTest, HasTheBodiesAsTheyAre) {
  add("volumes", [](const Call&) { return jsonAnswer("[ 1,2 ]"); });
  add(
      "health", [](const Call&) { return jsonAnswer("{}"); }, false);
  const auto found = files();
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(found.at("api/v1/volumes.json"), "[ 1,2 ]");
  EXPECT_EQ(found.at("api/v1/health.json"), "{}");
  EXPECT_EQ(told("format"), "1");
  EXPECT_EQ(told("madeAt"), "\"2023-11-14T22:13:20.250Z\"");
  EXPECT_EQ(told("host"), R"({"version":"1.2.3.4"})");
  EXPECT_EQ(told("plugin"), R"({"name":"mirn","code":"mirn","version":"5.4.0.1465"})");
  EXPECT_EQ(told("library"), "null");
  EXPECT_EQ(told("position"), R"({"epoch":"0123456789abcdef","revision":7,"structure":5,"sequence":3})");
  EXPECT_EQ(told("endPosition"), told("position"));
  EXPECT_EQ(told("moved"), "false");
  EXPECT_EQ(told("tries"), "1");
  EXPECT_EQ(boost::json::serialize(m_manifest.at("files").at(0)),
            R"({"name":"api/v1/volumes.json","operation":"volumes","target":"/api/v1/volumes","status":200,)"
            R"("mediaType":"application/json","bytes":7})");
}

TEST_F(BundleSourceTest, AsksAgainWhenThePictureChangedAmidTheAnswers) {
  int asked = 0;
  add("volumes", [&](const Call&) {
    if (++asked < 3) m_machine.change();
    return jsonAnswer(std::to_string(asked));
  });
  EXPECT_EQ(files().at("api/v1/volumes.json"), "3");
  EXPECT_EQ(told("tries"), "3");
  EXPECT_EQ(told("moved"), "false");
  EXPECT_EQ(m_manifest.at("files").as_array().size(), 1U);
}

TEST_F(BundleSourceTest, TellsOfAPictureThatDoesNotStay) {
  add("volumes", [&](const Call&) {
    m_machine.change();
    return jsonAnswer("[]");
  });
  files();
  EXPECT_EQ(told("tries"), "3");
  EXPECT_EQ(told("moved"), "true");
  EXPECT_EQ(m_manifest.at("position").at("revision").to_number<int>(), 9);
  EXPECT_EQ(m_manifest.at("endPosition").at("revision").to_number<int>(), 10);
}

TEST_F(BundleSourceTest, AnEventIsNoOtherPicture) {
  add("volumes", [&](const Call&) {
    m_machine.addEvent();
    return jsonAnswer("[]");
  });
  files();
  EXPECT_EQ(told("tries"), "1");
  EXPECT_EQ(told("moved"), "false");
}

TEST_F(BundleSourceTest, WithoutAPositionThereIsNothingToCompare) {
  m_subject->watched = nullptr;
  files();
  EXPECT_EQ(told("position"), "null");
  EXPECT_EQ(told("moved"), "false");
}

TEST_F(BundleSourceTest, FailuresAreAnswersToo) {
  add("volumes", [](const Call&) -> Answer { throw Refusal(503, "Not now, says /home/ann/x"); });
  add("nothing", [](const Call&) { return Answer{204, {}, {}, {}}; });
  add("text", [](const Call&) { return Answer{200, "text/plain; version=0.0.4", "up 1\n", {}}; });
  const auto found = files();
  EXPECT_EQ(boost::json::parse(found.at("api/v1/volumes.json")).at("detail").as_string(),
            "Not now, says .../x");
  EXPECT_EQ(found.at("api/v1/text.txt"), "up 1\n");
  EXPECT_EQ(found.size(), 3U);
  std::vector<std::string> rows;
  for (const auto& file : m_manifest.at("files").as_array()) {
    rows.push_back(boost::json::serialize(file.at("name")) + boost::json::serialize(file.at("status")));
  }
  EXPECT_THAT(rows, ElementsAre("null204", "\"api/v1/text.txt\"200", "\"api/v1/volumes.json\"503"));
}

TEST_F(BundleSourceTest, GoesOnToTheLastPageAndNoFurtherThanTen) {
  const auto page = [](int last) {
    return [last, asked = std::make_shared<int>(0)](const Call& call) {
      const int number = ++*asked;
      const auto cursor = call.target.parameters.find(L"cursor");
      EXPECT_EQ(cursor == call.target.parameters.end(), number == 1);
      return jsonAnswer(number < last ? R"({"items":[],"next":"c"})" : R"({"items":[],"next":null})");
    };
  };
  add("short", page(3), false);
  add("long", page(99), false);
  const auto found = files();
  EXPECT_EQ(found.size(), 14U);
  EXPECT_EQ(found.count("api/v1/short.json"), 1U);
  EXPECT_EQ(found.count("api/v1/short.page-3.json"), 1U);
  EXPECT_EQ(found.count("api/v1/long.page-10.json"), 1U);
}

TEST_F(BundleSourceTest, AsksAsSomebodyWhoMayOnlyObserve) {
  std::vector<Role> roles;
  add("volumes", [&](const Call& call) {
    roles.push_back(call.identity.role);
    EXPECT_EQ(call.identity.name, "ann");
    return jsonAnswer("[]");
  });
  files();
  EXPECT_THAT(roles, ElementsAre(Role::kObserve));
}

TEST_F(BundleSourceTest, AMaskCoversWhatInsightTells) {
  m_isMasked = true;
  m_subject->maskKey = "key";
  add(
      "health",
      [](const Call&) {
        return jsonAnswer(R"({"object":{"type":"disk","id":"12345678901234567890","name":"SATA GONE1"}})");
      },
      false);
  const auto found = files();
  EXPECT_EQ(found.at("api/v1/health.json").find("GONE1"), std::string::npos);
  EXPECT_EQ(found.at("api/v1/health.json").find("12345678901234567890"), std::string::npos);
  EXPECT_EQ(told("mask"), R"({"replaced":["serialNumber","id"],"sameUntil":"the host ends"})");
}

TEST_F(BundleSourceTest, GivesItsPlaceBack) {
  EXPECT_NE(m_places->take(), nullptr);
  files();
  EXPECT_NE(m_places->take(), nullptr);
}

}  // namespace

}  // namespace host
