#include "api/plugin_endpoints.h"

#include <gmock/gmock.h>

#include <stdexcept>

#include "host/api/mock_plugin.h"
#include "plugin_extensions.h"
#include "service_exceptions.h"
#include "support/by_name.h"

namespace host {

namespace {

using namespace std::string_literals;
using ovra::data_transfer::ServiceObject;
using testing::_;
using testing::ElementsAre;
using testing::Return;
using testing::Throw;

constexpr std::size_t kDepth = 32;

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
  DescribedEndpoints() { addPluginEndpoints(m_table, m_plugin, m_plugin.keys, kDepth); }

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

TEST(UndescribedEndpoints, AreAllBelowTheKeys) {
  testing::StrictMock<MockPlugin> plugin;
  EndpointTable table;
  addPluginEndpoints(table, plugin, plugin.keys, kDepth);
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
    EXPECT_NO_THROW(addPluginEndpoints(table, plugin, plugin.keys, kDepth));
  } else {
    EXPECT_THROW(addPluginEndpoints(table, plugin, plugin.keys, kDepth), std::runtime_error);
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

}  // namespace

}  // namespace host
