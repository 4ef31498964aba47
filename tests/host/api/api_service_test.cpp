#include "api/api_service.h"

#include <gmock/gmock.h>

#include <map>

#include "api/own_endpoints.h"
#include "api/plugin_endpoints.h"
#include "host/answers/refusal_of.h"
#include "host/api/mock_plugin.h"
#include "host/identity/single_token.h"
#include "support/by_name.h"

namespace host {

namespace {

using namespace std::string_literals;
using ovra::data_transfer::ServiceObject;
using testing::_;
using testing::ElementsAre;
using testing::Pair;
using testing::Return;

const std::string kToken(64, 'a');

Job jobOf(const ApiService& service, const RequestHead& head) {
  Job job;
  service.prepare(head, job);
  return job;
}

class ApiServiceTest : public testing::Test {
 protected:
  Answer answer(const std::string& method, const std::string& target, const std::string& body = "") {
    RequestHead head;
    head.method = method;
    head.target = target;
    head.authorization = "Bearer " + kToken;
    head.hasBody = !body.empty();
    return jobOf(m_service, head).run(body);
  }

  EndpointTable table() {
    EndpointTable table;
    addHealthEndpoints(table, m_monitor);
    addServiceEndpoint(table, m_plugin, m_plugin.keys);
    addPluginEndpoints(table, m_plugin, m_plugin.keys, {32, 100});
    return table;
  }

  testing::StrictMock<MockPlugin> m_plugin;
  HealthMonitor m_monitor{m_plugin};
  SingleToken m_authenticator{kToken};
  ApiService m_service{table(), m_authenticator, {16, 16}};
};

TEST_F(ApiServiceTest, HandsThePluginKeySegmentsAndParameters) {
  EXPECT_CALL(m_plugin, handleRequest(L"mirn/volumes"s, 3, ElementsAre(L"12"s, L"rebuild"s),
                                      ElementsAre(Pair(L"a"s, L"1"s)), _))
      .WillOnce(Return(ServiceObject(7U)));
  const Answer got = answer("PUT", "/api/v1/mirn/volumes/12/rebuild?a=1", "{}");
  EXPECT_EQ(got.status, 200U);
  EXPECT_EQ(got.contentType, "application/json");
  EXPECT_EQ(got.body.text(), "7");
}

TEST_F(ApiServiceTest, AnswersTheNullValueWithoutContent) {
  EXPECT_CALL(m_plugin, handleRequest(L"mirn"s, 1, ElementsAre(), ElementsAre(), _))
      .WillOnce(Return(ServiceObject()));
  const Answer got = answer("GET", "/api/v1/mirn");
  EXPECT_EQ(got.status, 204U);
  EXPECT_EQ(got.body.text(), "");
}

TEST_F(ApiServiceTest, NeverCallsThePluginWithABrokenBody) {
  EXPECT_THROW(answer("PUT", "/api/v1/mirn", "{"), Refusal);
}

TEST_F(ApiServiceTest, AnswersAFailureOfThePlugin) {
  EXPECT_CALL(m_plugin, handleRequest(_, _, _, _, _))
      .WillOnce(testing::Throw(ListenerException("NOT_SUPPORTED", "no")))
      .WillOnce(testing::Throw(ListenerException("Mirn_OFFLINE", "not now")));
  EXPECT_EQ(answer("GET", "/api/v1/mirn").status, 422U);
  const Answer later = answer("GET", "/api/v1/mirn");
  EXPECT_EQ(later.status, 503U);
  EXPECT_THAT(later.headers, ElementsAre(Pair("Retry-After", "2")));
}

TEST_F(ApiServiceTest, HealthIsWhatTheMonitorKnows) {
  EXPECT_THROW(answer("GET", "/healthz"), Refusal);
  EXPECT_CALL(m_plugin, getStatus()).WillOnce(Return(0));
  m_monitor.ask();
  EXPECT_EQ(answer("GET", "/healthz").body.text(), R"({"status":"working"})");
  EXPECT_EQ(answer("GET", "/readyz").body.text(), R"({"status":"ready"})");
  m_monitor.announceStop();
  EXPECT_THROW(answer("GET", "/readyz"), Refusal);
}

TEST_F(ApiServiceTest, AJobTellsWhatItIs) {
  const Job job = jobOf(m_service, {"DELETE", "/api/v1/mirn/volumes/7", "Bearer " + kToken, "", false});
  EXPECT_EQ(job.identity, "first");
  EXPECT_EQ(job.operation, "DELETE mirn/volumes");
  EXPECT_EQ(job.lane, Lane::kChanges);
  EXPECT_TRUE(job.isChange);
}

TEST_F(ApiServiceTest, HeadIsAGet) {
  EXPECT_EQ(answer("HEAD", "/api/v1").body.text(), answer("GET", "/api/v1").body.text());
}

TEST_F(ApiServiceTest, AnybodyMayAskForTheMethods) {
  for (const auto& [target, allowed] : std::map<std::string, std::string>{
           {"*", "GET, HEAD, POST, PUT, DELETE, OPTIONS"},
           {"/healthz", "GET, HEAD, OPTIONS"},
           {"/api/v1", "GET, HEAD, OPTIONS"},
           {"/api/v1/mirn/volumes", "GET, HEAD, POST, PUT, DELETE, OPTIONS"}}) {
    const Answer got = jobOf(m_service, {"OPTIONS", target, "", "", false}).run("");
    EXPECT_EQ(got.status, 204U) << target;
    EXPECT_THAT(got.headers, ElementsAre(Pair("Allow", allowed))) << target;
  }
}

class ObservingOnly : public IAuthenticator {
 public:
  Identity identify(const Credentials&) const override { return {"eve", Role::kObserve}; }
  bool stillHolds(const Identity&) const override { return true; }
};

TEST_F(ApiServiceTest, ARoleThatIsTooLowIsRefused) {
  const ObservingOnly authenticator;
  const ApiService service(table(), authenticator, {16, 16});
  EXPECT_NO_THROW(jobOf(service, {"GET", "/api/v1/mirn", "", "", false}));
  Job job;
  const auto refusal = refusalOf([&] { service.prepare({"PUT", "/api/v1/mirn", "", "", false}, job); });
  ASSERT_TRUE(refusal) << "was taken";
  EXPECT_EQ(refusal->status, 403);
  EXPECT_STREQ(refusal->what(), R"(This takes the role "administer"; yours is "observe")");
  EXPECT_EQ(job.identity, "eve") << "whoever is refused is known by now";
  EXPECT_EQ(job.operation, "PUT mirn");
}

struct HeadRow {
  std::string name;
  RequestHead head;
  int status;
};

class ApiServiceRefusalTest : public ApiServiceTest, public testing::WithParamInterface<HeadRow> {};

TEST_P(ApiServiceRefusalTest, IsMadeByTheHeaderAlone) {
  const auto refusal = refusalOf([&] { jobOf(m_service, GetParam().head); });
  ASSERT_TRUE(refusal) << "was taken";
  EXPECT_EQ(refusal->status, GetParam().status);
}

const std::string kBearer = "Bearer " + kToken;

INSTANTIATE_TEST_SUITE_P(
    Heads, ApiServiceRefusalTest,
    testing::Values(HeadRow{"BrokenTarget", {"GET", "/api//", kBearer, "", false}, 400},
                    HeadRow{"NoToken", {"GET", "/api/v1/mirn", "", "", false}, 401},
                    HeadRow{"NoTokenAheadOfTheMethod", {"PATCH", "/api/v1/mirn", "", "", false}, 401},
                    HeadRow{"TokenWithoutScheme", {"GET", "/api/v1/mirn", kToken, "", false}, 401},
                    HeadRow{"NoApi", {"GET", "/apis/v1/mirn", kBearer, "", false}, 404},
                    HeadRow{"OtherVersion", {"GET", "/api/v2/mirn", kBearer, "", false}, 404},
                    HeadRow{"OptionsOfNothing", {"OPTIONS", "/api/v1/morn", kBearer, "", false}, 404},
                    HeadRow{"OptionsOfNothingToken", {"OPTIONS", "/api/v1/morn", "", "", false}, 401},
                    HeadRow{"StarIsForOptions", {"GET", "*", kBearer, "", false}, 400},
                    HeadRow{"OtherKey", {"GET", "/api/v1/morn", kBearer, "", false}, 404},
                    HeadRow{"RootIsOnlyRead", {"PUT", "/api/v1", kBearer, "", false}, 405},
                    HeadRow{"Method", {"PATCH", "/api/v1/mirn", kBearer, "", false}, 405},
                    HeadRow{"MethodCaseCounts", {"get", "/api/v1/mirn", kBearer, "", false}, 405},
                    HeadRow{"HealthMethod", {"PUT", "/healthz", "", "", false}, 405},
                    HeadRow{"OtherType", {"PUT", "/api/v1/mirn", kBearer, "text/json", true}, 415}),
    ByName());

struct TypeRow {
  std::string name;
  std::string contentType;
  bool hasBody;
};

class ApiServiceTypeTest : public ApiServiceTest, public testing::WithParamInterface<TypeRow> {};

TEST_P(ApiServiceTypeTest, IsTaken) {
  EXPECT_NO_THROW(
      jobOf(m_service, {"PUT", "/api/v1/mirn", kBearer, GetParam().contentType, GetParam().hasBody}));
}

INSTANTIATE_TEST_SUITE_P(Types, ApiServiceTypeTest,
                         testing::Values(TypeRow{"Json", "application/json", true},
                                         TypeRow{"InAnyCase", "Application/JSON", true},
                                         TypeRow{"WithParameter", "application/json ; charset=utf-8", true},
                                         TypeRow{"Missing", "", true},
                                         TypeRow{"OtherWithoutBody", "text/xml", false}),
                         ByName());

}  // namespace

}  // namespace host
