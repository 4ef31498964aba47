#include "api/plugin_endpoints.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "host/api/mock_plugin.h"
#include "plugin_extensions.h"
#include "service_exceptions.h"
#include "support/by_name.h"
#include "text.h"

namespace host {

namespace {

using namespace std::string_literals;
using ovra::data_transfer::ServiceObject;
using testing::_;
using testing::ElementsAre;
using testing::Return;
using testing::Throw;

using Segments = std::vector<std::wstring>;

constexpr JsonBounds kBodies{32, 100};

/// A description of two routes, and of one refusal of the second.
class DescribedPlugin : public MockPlugin, public ovra::described_plugin_1 {
 public:
  ServiceObject describe() override {
    ServiceObject told;
    told.member(L"routes").at(0) = route(L"listVolumes", L"GET", L"mirn/volumes", L"read", L"observe");
    ServiceObject change =
        route(L"renameVolume", L"PUT", L"mirn/volumes/{volumeId}/name", L"changes", L"operate");
    ServiceObject& refusal = change.member(L"refusals").at(0);
    refusal.member(L"errorId") = L"INVALID_PARAMETER"s;
    refusal.member(L"words") = L"In use"s;
    refusal.member(L"kind") = L"state"s;
    ServiceObject& field = change.member(L"body").at(0);
    field.member(L"name") = L"diskId"s;
    field.member(L"refersTo") = L"disk"s;
    told.member(L"routes").at(1).swap(change);
    return told;
  }

 private:
  static ServiceObject route(const wchar_t* id, const wchar_t* method, const wchar_t* path,
                             const wchar_t* effect, const wchar_t* role) {
    ServiceObject form;
    form.member(L"id") = std::wstring(id);
    form.member(L"method") = std::wstring(method);
    form.member(L"key") = L"mirn/volumes"s;
    form.member(L"path") = std::wstring(path);
    form.member(L"effect") = std::wstring(effect);
    form.member(L"role") = std::wstring(role);
    form.member(L"body") = ServiceObject::array();
    return form;
  }
};

class DescribedEndpoints : public testing::Test {
 protected:
  DescribedEndpoints() { addPluginEndpoints(m_table, m_plugin, m_plugin.keys, kBodies); }

  const ApiEndpoint& rename() const {
    return *m_table.find({L"api", L"v1", L"mirn", L"volumes", L"7", L"name"})->find("PUT");
  }

  Answer answer() const {
    const Call call{{{L"api", L"v1", L"mirn", L"volumes", L"7", L"name"}, {}}, {}};
    return rename().handle(call, "{}");
  }

  testing::StrictMock<DescribedPlugin> m_plugin;
  EndpointTable m_table;
};

TEST_F(DescribedEndpoints, AreTheRoutes) {
  EXPECT_EQ(rename().operation, "renameVolume");
  EXPECT_EQ(rename().role, Role::kOperate);
  EXPECT_EQ(rename().lane, Lane::kChanges);
  EXPECT_TRUE(rename().isChange);
  EXPECT_THAT(rename().references, ElementsAre(L"diskId"s));
  const EndpointTable::Resource* const list = m_table.find({L"api", L"v1", L"mirn", L"volumes"});
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->find("GET")->role, Role::kObserve);
  EXPECT_EQ(list->find("GET")->lane, Lane::kReads);
  EXPECT_FALSE(list->find("GET")->isChange);
  EXPECT_EQ(list->find("POST"), nullptr);
}

TEST_F(DescribedEndpoints, ThereAreNoOthers) {
  EXPECT_EQ(m_table.find({L"api", L"v1", L"mirn"}), nullptr);
  EXPECT_EQ(m_table.find({L"api", L"v1", L"mirn", L"volumes", L"7"}), nullptr);
}

TEST_F(DescribedEndpoints, HandOverKeyAndSegments) {
  EXPECT_CALL(m_plugin, handleRequest(L"mirn/volumes"s, 3, ElementsAre(L"7"s, L"name"s), _, _))
      .WillOnce(Return(ServiceObject()));
  EXPECT_EQ(answer().status, 204U);
}

TEST_F(DescribedEndpoints, TheKindOfARefusalIsItsStatus) {
  EXPECT_CALL(m_plugin, handleRequest(_, _, _, _, _))
      .WillOnce(Throw(ListenerException("INVALID_PARAMETER", "In use")))
      .WillOnce(Throw(ListenerException("INVALID_PARAMETER", "Too long")));
  EXPECT_EQ(answer().status, 409U);
  EXPECT_EQ(answer().status, 400U);
}

/// Rehearsals tell what was asked.
class RehearsedPlugin : public DescribedPlugin, public ovra::rehearsed_plugin_1 {
 public:
  ServiceObject rehearse(std::wstring path, std::int32_t, std::vector<std::wstring> segments,
                         std::map<std::wstring, std::wstring>, ServiceObject) override {
    if (!segments.empty() && segments[0] == L"8") throw ListenerException("INVALID_PARAMETER", "In use");
    ServiceObject told;
    told.member(L"operation") = path;
    return told;
  }
  ServiceObject rehearseEach(std::wstring, std::int32_t, std::vector<std::wstring>,
                             std::map<std::wstring, std::wstring>, ServiceObject, std::wstring,
                             std::vector<ServiceObject>) override {
    return {};
  }
};

class PlannedEndpoints : public testing::Test {
 protected:
  PlannedEndpoints() {
    const auto make = [this](const AskedChange& change, const ChangePlans::Rehearse& rehearse) {
      m_asked.push_back(change);
      return jsonAnswer("planned " + wideToUtf8(rehearse().member(L"operation").toString()));
    };
    addPluginEndpoints(m_table, m_plugin, m_plugin.keys, kBodies, nullptr, {make, &m_schema});
  }

  const ApiEndpoint& endpoint(const Segments& segments, const char* method) const {
    return *m_table.find(segments)->find(method);
  }

  Answer rehearsal(const std::wstring& volume) const {
    const Call call{{{L"api", L"v1", L"mirn", L"volumes", volume, L"name"}, {}}, {}};
    return endpoint(call.target.segments, "PUT").rehearse(call, R"({"name": "New"})");
  }

  const std::string m_schema = "{}";
  std::vector<AskedChange> m_asked;
  testing::StrictMock<RehearsedPlugin> m_plugin;
  EndpointTable m_table;
};

TEST_F(PlannedEndpoints, AnswerChangesWithWhatIsPlanned) {
  const Answer answer = rehearsal(L"7");
  EXPECT_EQ(answer.status, 200U);
  EXPECT_EQ(answer.body.text(), "planned mirn/volumes");
  ASSERT_EQ(m_asked.size(), 1U);
  EXPECT_EQ(m_asked[0].operation, "renameVolume");
  EXPECT_THAT(m_asked[0].segments, ElementsAre(L"7"s, L"name"s));
  EXPECT_EQ(m_asked[0].body.member(L"name").toString(), L"New");
}

TEST_F(PlannedEndpoints, AreRefusedAsTheRehearsalIs) {
  const Answer answer = rehearsal(L"8");
  EXPECT_EQ(answer.status, 409U);
}

TEST_F(PlannedEndpoints, LeaveReadsAlone) {
  const Segments list{L"api", L"v1", L"mirn", L"volumes"};
  const Answer answer = endpoint(list, "GET").rehearse({{list, {}}, {}}, "");
  EXPECT_EQ(answer.status, 200U);
  EXPECT_TRUE(m_asked.empty());
  EXPECT_EQ(endpoint(list, "GET").planSchema, nullptr);
  EXPECT_EQ(endpoint({L"api", L"v1", L"mirn", L"volumes", L"7", L"name"}, "PUT").planSchema, &m_schema);
}

TEST(UndescribedEndpoints, AreAllBelowTheKeys) {
  testing::StrictMock<MockPlugin> plugin;
  EndpointTable table;
  addPluginEndpoints(table, plugin, plugin.keys, kBodies);
  const EndpointTable::Resource* const found = table.find({L"api", L"v1", L"mirn", L"volumes", L"7"});
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->allowed(), "GET, HEAD, POST, PUT, DELETE, OPTIONS");
  EXPECT_EQ(found->find("GET")->role, Role::kObserve);
  EXPECT_EQ(found->find("DELETE")->role, Role::kAdminister);
  EXPECT_TRUE(found->find("DELETE")->isChange);
  EXPECT_EQ(found->find("GET")->operation, "GET mirn/volumes");
}

struct KeyRow {
  std::string name;
  std::wstring key;
  bool isFree;
};

class KeysOfAPlugin : public testing::TestWithParam<KeyRow> {};

TEST_P(KeysOfAPlugin, AreNoneOfTheHosts) {
  testing::StrictMock<MockPlugin> plugin;
  plugin.keys = {L"mirn", GetParam().key};
  EndpointTable table;
  if (GetParam().isFree) {
    EXPECT_NO_THROW(addPluginEndpoints(table, plugin, plugin.keys, kBodies));
  } else {
    EXPECT_THROW(addPluginEndpoints(table, plugin, plugin.keys, kBodies), std::runtime_error);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Keys, KeysOfAPlugin,
    testing::Values(KeyRow{"Session", L"session", false}, KeyRow{"BelowSimulator", L"simulator/deep", false},
                    KeyRow{"Tokens", L"tokens", false}, KeyRow{"Stream", L"events/stream", false},
                    KeyRow{"BelowTheStream", L"events/stream/x", false},
                    KeyRow{"EventsAlone", L"events", true}, KeyRow{"AnotherBeginning", L"sessions", true},
                    KeyRow{"FurtherInside", L"mirn/session", true}),
    ByName());

struct OwnName {
  const char* name;
  std::wstring key;
};

class OwnNames : public testing::TestWithParam<OwnName> {};

TEST_P(OwnNames, AreNoPluginsToHandle) {
  testing::NiceMock<MockPlugin> plugin;
  for (const std::wstring& key : {GetParam().key, GetParam().key + L"/more"}) {
    EndpointTable table;
    EXPECT_THROW(addPluginEndpoints(table, plugin, {key}, kBodies), std::runtime_error);
  }
  EndpointTable table;
  EXPECT_NO_THROW(addPluginEndpoints(table, plugin, {GetParam().key + L"s"}, kBodies));
}

INSTANTIATE_TEST_SUITE_P(Names, OwnNames,
                         testing::Values(OwnName{"Session", L"session"}, OwnName{"Health", L"health"},
                                         OwnName{"Actions", L"actions"}, OwnName{"Jobs", L"jobs"},
                                         OwnName{"Alarms", L"alarms"}, OwnName{"History", L"history"},
                                         OwnName{"Stream", L"events/stream"}, OwnName{"Bundle", L"bundle"},
                                         OwnName{"Tokens", L"tokens"}, OwnName{"About", L"about"},
                                         OwnName{"Simulator", L"simulator"}),
                         ByName());

}  // namespace

}  // namespace host
