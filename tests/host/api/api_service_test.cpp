#include "api/api_service.h"

#include <gmock/gmock.h>

#include <map>

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

class MockPlugin : public ovra::service_plugin_interface {
 public:
  const std::wstring& getShortName() const override { return m_name; }
  const std::wstring& getName() const override { return m_name; }
  const PluginVersion& getVersion() const override { return m_version; }
  const std::wstring& getCode() const override { return m_name; }
  const std::wstring& getApiVersion() const override { return m_apiVersion; }
  std::vector<std::wstring> getHandledPaths() override { return {L"mirn", L"mirn/volumes"}; }

  MOCK_METHOD(bool, initialize, (), (override));
  MOCK_METHOD(void, finish, (), (override));
  MOCK_METHOD(std::int32_t, getStatus, (), (override));
  MOCK_METHOD(ServiceObject, handleRequest,
              (std::wstring, std::int32_t, std::vector<std::wstring>, (std::map<std::wstring, std::wstring>),
               ServiceObject),
              (override));

 private:
  const std::wstring m_name = L"mirn";
  const std::wstring m_apiVersion = L"v1";
  const PluginVersion m_version{5, 4, 0, 1465};
};

class ApiServiceTest : public testing::Test {
 protected:
  Answer answer(const std::string& method, const std::string& target, const std::string& body = "") {
    RequestHead head;
    head.method = method;
    head.target = target;
    head.authorization = "Bearer " + kToken;
    head.hasBody = !body.empty();
    return m_service.prepare(head).run(body);
  }

  testing::StrictMock<MockPlugin> m_plugin;
  SingleToken m_authenticator{kToken};
  ApiService m_service{m_plugin, m_authenticator, 32};
};

TEST_F(ApiServiceTest, HandsThePluginKeySegmentsAndParameters) {
  EXPECT_CALL(m_plugin, handleRequest(L"mirn/volumes"s, 3, ElementsAre(L"12"s, L"rebuild"s),
                                      ElementsAre(Pair(L"a"s, L"1"s)), _))
      .WillOnce(Return(ServiceObject(7U)));
  const Answer got = answer("PUT", "/api/v1/mirn/volumes/12/rebuild?a=1", "{}");
  EXPECT_EQ(got.status, 200U);
  EXPECT_EQ(got.contentType, "application/json");
  EXPECT_EQ(got.body, "7");
}

TEST_F(ApiServiceTest, AnswersTheNullValueWithoutContent) {
  EXPECT_CALL(m_plugin, handleRequest(L"mirn"s, 1, ElementsAre(), ElementsAre(), _))
      .WillOnce(Return(ServiceObject()));
  const Answer got = answer("GET", "/api/v1/mirn");
  EXPECT_EQ(got.status, 204U);
  EXPECT_EQ(got.body, "");
}

TEST_F(ApiServiceTest, NeverCallsThePluginWithABrokenBody) {
  EXPECT_THROW(answer("PUT", "/api/v1/mirn", "{"), Refusal);
}

TEST_F(ApiServiceTest, LeavesAFailureToItsCaller) {
  EXPECT_CALL(m_plugin, handleRequest(_, _, _, _, _))
      .WillOnce(testing::Throw(ListenerException("NOT_SUPPORTED", "no")));
  EXPECT_THROW(answer("GET", "/api/v1/mirn"), ListenerException);
}

TEST_F(ApiServiceTest, HealthIsTheStatusOfEachMoment) {
  EXPECT_CALL(m_plugin, getStatus()).WillOnce(Return(0)).WillOnce(Return(1)).WillOnce(Return(2));
  EXPECT_EQ(answer("GET", "/healthz").body, R"({"status":"working"})");
  EXPECT_THROW(answer("GET", "/healthz"), Refusal);
  EXPECT_THROW(answer("GET", "/healthz"), Refusal);
}

struct HeadRow {
  std::string name;
  RequestHead head;
  int status;
};

class ApiServiceRefusalTest : public ApiServiceTest, public testing::WithParamInterface<HeadRow> {};

TEST_P(ApiServiceRefusalTest, IsMadeByTheHeaderAlone) {
  try {
    m_service.prepare(GetParam().head);
    FAIL() << "was taken";
  } catch (const Refusal& refusal) {
    EXPECT_EQ(refusal.status, GetParam().status);
  }
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
                    HeadRow{"OtherKey", {"GET", "/api/v1/morn", kBearer, "", false}, 404},
                    HeadRow{"RootIsOnlyRead", {"PUT", "/api/v1", kBearer, "", false}, 404},
                    HeadRow{"Method", {"HEAD", "/api/v1/mirn", kBearer, "", false}, 405},
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
      m_service.prepare({"PUT", "/api/v1/mirn", kBearer, GetParam().contentType, GetParam().hasBody}));
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
