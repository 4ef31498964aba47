#include "base_listener.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <type_traits>
#include <utility>

#include "framework_messages.h"
#include "http_method.h"
#include "service_exceptions.h"
#include "support/expect_http_error.h"
#include "support/virtual_slot.h"

namespace {

using ovra::data_transfer::ServiceObject;
using testing::ElementsAre;
using testing::Key;
using Segments = std::vector<std::wstring>;

static_assert(std::is_base_of_v<IListener, BaseListener>);
static_assert(std::has_virtual_destructor_v<IListener>);

/// A listener whose routes the test registers.
class OpenListener : public BaseListener {
 public:
  using BaseListener::addRoute;
};

RouteHandler answering(const wchar_t* text) {
  return [text](const RouteMatch&, const RequestParameters&, ServiceObject) { return ServiceObject(text); };
}

class BaseListenerTest : public testing::Test {
 protected:
  std::wstring ask(std::int32_t method, const Segments& segments) {
    return m_listener.handleRequest(method, segments, m_parameters, m_body).toString();
  }
  std::wstring get(const Segments& segments) { return ask(HttpMethod::kGet, segments); }

  void expectNotFound(std::int32_t method, const Segments& segments) {
    expectHttpError(404, "Request is not supported", [&] { ask(method, segments); });
  }

  OpenListener m_listener;
  RequestParameters m_parameters;
  ServiceObject m_body;
};

TEST(IListenerTest, HandlesRequestsByItsOperationBehindTheDestructor) {
  EXPECT_EQ(virtualSlot(&IListener::handleRequest), 2u);
}

TEST_F(BaseListenerTest, HasAnEntryForEachOfTheFourMethodsFromTheStart) {
  EXPECT_THAT(m_listener.routes(), ElementsAre(Key(1), Key(2), Key(3), Key(4)));
  for (const auto& [method, routes] : m_listener.routes()) EXPECT_TRUE(routes.empty()) << method;
}

TEST_F(BaseListenerTest, KeepsRoutesInOrderOfRegistration) {
  m_listener.addRoute(HttpMethod::kGet, L"b", answering(L"1"));
  m_listener.addRoute(HttpMethod::kGet, L"a", answering(L"2"));
  m_listener.addRoute(9, L"c", answering(L"3"));
  ASSERT_EQ(m_listener.routes().at(HttpMethod::kGet).size(), 2u);
  EXPECT_EQ(m_listener.routes().at(HttpMethod::kGet)[0].pattern, L"b");
  EXPECT_EQ(m_listener.routes().at(HttpMethod::kGet)[1].pattern, L"a");
  EXPECT_EQ(m_listener.routes().at(9).size(), 1u);
}

TEST_F(BaseListenerTest, EmptySegmentsMatchOnlyAPatternOfTheEmptyText) {
  m_listener.addRoute(HttpMethod::kGet, L"state", answering(L"state"));
  expectNotFound(HttpMethod::kGet, {});
  m_listener.addRoute(HttpMethod::kGet, L"", answering(L"root"));
  EXPECT_EQ(get({}), L"root");
}

TEST_F(BaseListenerTest, SegmentsAreJoinedWithoutLeadingOrTrailingSlash) {
  m_listener.addRoute(HttpMethod::kGet, L"a/b/c", answering(L"joined"));
  EXPECT_EQ(get({L"a", L"b", L"c"}), L"joined");
}

TEST_F(BaseListenerTest, APatternCoversTheWholePath) {
  m_listener.addRoute(HttpMethod::kGet, L"state", answering(L"state"));
  EXPECT_EQ(get({L"state"}), L"state");
  expectNotFound(HttpMethod::kGet, {L"state", L"x"});
  expectNotFound(HttpMethod::kGet, {L"xstate"});
}

TEST_F(BaseListenerTest, TheEarlierOfTwoMatchingRoutesRuns) {
  m_listener.addRoute(HttpMethod::kGet, L"([[:alnum:]]+)", answering(L"any"));
  m_listener.addRoute(HttpMethod::kGet, L"state", answering(L"state"));
  EXPECT_EQ(get({L"state"}), L"any");
}

TEST_F(BaseListenerTest, AMethodWithoutRoutesIsNotFoundEachTime) {
  m_listener.addRoute(HttpMethod::kGet, L"state", answering(L"state"));
  expectNotFound(7, {L"state"});
  expectNotFound(7, {L"state"});
  EXPECT_TRUE(m_listener.routes().at(7).empty());
}

TEST_F(BaseListenerTest, ARouteOfAnotherMethodIsNotFoundRatherThanRefused) {
  m_listener.addRoute(HttpMethod::kGet, L"state", answering(L"state"));
  expectNotFound(HttpMethod::kPut, {L"state"});
}

TEST_F(BaseListenerTest, AHandlerSeesTheMatchTheParametersAndTheBody) {
  m_listener.addRoute(HttpMethod::kPut, L"([[:alnum:]]+)/size",
                      [](const RouteMatch& match, const RequestParameters& parameters, ServiceObject body) {
                        return ServiceObject(match.str(0) + L" " + match.str(1) + L" " +
                                             parameters.at(L"key") + L" " + body.toString());
                      });
  m_parameters = {{L"key", L"value"}};
  m_body = std::wstring(L"body");
  EXPECT_EQ(ask(HttpMethod::kPut, {L"17", L"size"}), L"17/size 17 value body");
}

TEST_F(BaseListenerTest, AHandlersChangeToItsBodyStaysItsOwn) {
  m_listener.addRoute(HttpMethod::kPost, L"",
                      [](const RouteMatch&, const RequestParameters&, ServiceObject body) {
                        body.member(L"name") = std::wstring(L"changed");
                        return body;
                      });
  m_body.member(L"name") = std::wstring(L"sent");
  const ServiceObject answer = m_listener.handleRequest(HttpMethod::kPost, {}, {}, m_body);
  EXPECT_EQ(answer.member(L"name").toString(), L"changed");
  EXPECT_EQ(m_body.member(L"name").toString(), L"sent");
}

class HandlersOwnFailure : public std::exception {};

TEST_F(BaseListenerTest, AnExceptionOfAHandlerArrivesUnchanged) {
  m_listener.addRoute(HttpMethod::kGet, L"own",
                      [](const RouteMatch&, const RequestParameters&, ServiceObject) -> ServiceObject {
                        throw HandlersOwnFailure();
                      });
  m_listener.addRoute(HttpMethod::kGet, L"range",
                      [](const RouteMatch&, const RequestParameters&, ServiceObject) -> ServiceObject {
                        throw std::out_of_range("the handler's");
                      });
  try {
    get({L"own"});
    FAIL() << "no exception";
  } catch (const std::exception& error) {
    EXPECT_EQ(typeid(error), typeid(HandlersOwnFailure));
  }
  // Of the same type as what the look-up of the method is guarded against.
  EXPECT_THROW(get({L"range"}), std::out_of_range);
}

TEST_F(BaseListenerTest, ABadPatternSpoilsOnlyTheRequestsThatReachIt) {
  m_listener.addRoute(HttpMethod::kGet, L"good", answering(L"good"));
  m_listener.addRoute(HttpMethod::kGet, L"(", answering(L"bad"));
  EXPECT_EQ(get({L"good"}), L"good");
  EXPECT_THROW(get({L"other"}), boost::regex_error);
}

TEST(FrameworkMessages, HaveTheirWords) {
  EXPECT_STREQ(kMsgMethodNotSupported, L"Used HTTP method is not supported");
  EXPECT_STREQ(kMsgRequestNotSupported, L"Request is not supported");
  EXPECT_STREQ(kMsgPluginNotWorking, L"Mirn plugin does not work");
  EXPECT_STREQ(kMsgRequestNotParsed, L"Request could not be parsed correctly");
  EXPECT_STREQ(kMsgExceptionOccurred, L"Exception occured during request handling");
  EXPECT_STREQ(kMsgInvalidParameters, L"Invalid parameters");
  EXPECT_STREQ(kMsgInvalidInput, L"Input is not valid for this request");
}

}  // namespace
