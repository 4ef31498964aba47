#include "base_plugin.h"

#include <gmock/gmock.h>

#include <memory>

#include "framework_messages.h"
#include "http_method.h"
#include "plugin_identity.h"
#include "support/expect_http_error.h"

namespace {

using ovra::data_transfer::ServiceObject;
using testing::ElementsAre;
using testing::IsEmpty;
using Segments = std::vector<std::wstring>;

/// The smallest plug-in without listeners.
class PlainPlugin final : public ovra::BasePlugin {
 public:
  bool initialize() override { return true; }
  void finish() override {}
  std::int32_t getStatus() override { return 0; }

  void addRoute(std::int32_t method, const std::wstring& pattern, RouteHandler handler) {
    m_routes[method].push_back({pattern, std::move(handler)});
  }
  void clearRoutes(std::int32_t method) { m_routes[method].clear(); }
  const RouteTable& routes() const { return m_routes; }
  std::vector<std::wstring>& paths() { return m_paths; }
};

RouteHandler answering(const wchar_t* text) {
  return [text](const RouteMatch&, const RequestParameters&, ServiceObject) { return ServiceObject(text); };
}

class BasePluginTest : public testing::Test {
 protected:
  std::wstring ask(std::int32_t method, const std::wstring& path, const Segments& segments) {
    return m_plugin.handleRequest(path, method, segments, m_parameters, m_body).toString();
  }
  std::wstring get(const std::wstring& path, const Segments& segments) {
    return ask(HttpMethod::kGet, path, segments);
  }
  void expectNotFound(std::int32_t method, const std::wstring& path, const Segments& segments) {
    expectHttpError(404, "Request is not supported", [&] { ask(method, path, segments); });
  }

  PlainPlugin m_plugin;
  RequestParameters m_parameters;
  ServiceObject m_body;
};

void expectVersion(const PluginVersion& version) {
  EXPECT_EQ(version.major, 5u);
  EXPECT_EQ(version.minor, 4u);
  EXPECT_EQ(version.patch, 0u);
  EXPECT_EQ(version.build, 1465u);
}

TEST(PluginIdentity, IsFixed) {
  EXPECT_EQ(kPluginName, L"Ordan Mirn plugin");
  EXPECT_EQ(kPluginShortName, L"Mirn plugin");
  EXPECT_EQ(kPluginCode, L"mirn");
  EXPECT_EQ(kPluginApiVersion, L"v1");
  expectVersion(kPluginVersion);
}

TEST_F(BasePluginTest, TellsTheModulesIdentity) {
  EXPECT_EQ(m_plugin.getName(), L"Ordan Mirn plugin");
  EXPECT_EQ(m_plugin.getShortName(), L"Mirn plugin");
  EXPECT_EQ(m_plugin.getCode(), L"mirn");
  EXPECT_EQ(m_plugin.getApiVersion(), L"v1");
  expectVersion(m_plugin.getVersion());
}

TEST_F(BasePluginTest, KeepsCopiesOfItsOwn) {
  const PlainPlugin other;
  for (const auto get : {&ovra::BasePlugin::getName, &ovra::BasePlugin::getShortName,
                         &ovra::BasePlugin::getCode, &ovra::BasePlugin::getApiVersion}) {
    const std::wstring* const own = &(m_plugin.*get)();
    for (const std::wstring* const constant :
         {&kPluginName, &kPluginShortName, &kPluginCode, &kPluginApiVersion}) {
      EXPECT_NE(own, constant) << testing::PrintToString(*own);
    }
    EXPECT_NE(own, &(other.*get)()) << testing::PrintToString(*own);
  }
  EXPECT_NE(&m_plugin.getVersion(), &kPluginVersion);
  EXPECT_NE(&m_plugin.getVersion(), &other.getVersion());
}

TEST_F(BasePluginTest, HandlesNoPathsUntilTheyAreFilled) {
  EXPECT_THAT(m_plugin.getHandledPaths(), IsEmpty());
  m_plugin.paths() = {L"mirn/b", L"mirn/a"};
  EXPECT_THAT(m_plugin.getHandledPaths(), ElementsAre(L"mirn/b", L"mirn/a"));
}

TEST_F(BasePluginTest, WithoutRoutesNothingIsFound) { expectNotFound(HttpMethod::kGet, L"mirn", {L"state"}); }

TEST_F(BasePluginTest, AMethodWithoutRoutesIsNotFoundAndLeavesAnEmptyEntry) {
  m_plugin.addRoute(HttpMethod::kGet, L"mirn", answering(L"read"));
  expectNotFound(HttpMethod::kPut, L"mirn", {});
  EXPECT_EQ(m_plugin.routes().size(), 2u);
  EXPECT_THAT(m_plugin.routes().at(HttpMethod::kPut), IsEmpty());
}

TEST_F(BasePluginTest, WithoutSegmentsThePathStandsBare) {
  m_plugin.addRoute(HttpMethod::kGet, L"mirn/", answering(L"with slash"));
  m_plugin.addRoute(HttpMethod::kGet, L"mirn", answering(L"bare"));
  EXPECT_EQ(get(L"mirn", {}), L"bare");
}

TEST_F(BasePluginTest, PathAndSegmentsAreMatchedAsOneText) {
  m_plugin.addRoute(HttpMethod::kGet, L"mirn/volumes/([[:alnum:]]+)/size", answering(L"size"));
  EXPECT_EQ(get(L"mirn/volumes", {L"17", L"size"}), L"size");
  expectNotFound(HttpMethod::kGet, L"mirn/volumes", {L"17", L"size", L"x"});
  expectNotFound(HttpMethod::kGet, L"mirn/volumes", {L"17"});
}

TEST_F(BasePluginTest, TheFirstMatchingRouteRuns) {
  m_plugin.addRoute(HttpMethod::kGet, L"mirn/.*", answering(L"first"));
  m_plugin.addRoute(HttpMethod::kGet, L"mirn/state", answering(L"second"));
  EXPECT_EQ(get(L"mirn", {L"state"}), L"first");
}

TEST_F(BasePluginTest, ARequestGoesOnWithItsOwnListWhenItsHandlerChangesTheRoutes) {
  auto part = std::make_shared<int>();  // of the handler, and gone with the last copy of it
  const std::weak_ptr<int> partSeen = part;
  bool handlerLives = false;
  m_plugin.addRoute(
      HttpMethod::kGet, L"mirn/change",
      [part, partSeen, &handlerLives, this](const RouteMatch&, const RequestParameters&, ServiceObject) {
        const auto seen = partSeen;
        bool& lives = handlerLives;
        PlainPlugin& plugin = m_plugin;
        plugin.clearRoutes(HttpMethod::kGet);
        plugin.addRoute(HttpMethod::kGet, L"mirn/.*", answering(L"new"));
        lives = !seen.expired();
        return ServiceObject(L"old");
      });
  part.reset();
  EXPECT_EQ(get(L"mirn", {L"change"}), L"old");
  EXPECT_TRUE(handlerLives);
  EXPECT_EQ(get(L"mirn", {L"change"}), L"new") << "what the next request finds";
}

TEST_F(BasePluginTest, AHandlerSeesTheMatchTheParametersAndTheBody) {
  m_plugin.addRoute(
      HttpMethod::kPost, L"mirn/(\\w+)",
      [](const RouteMatch& match, const RequestParameters& parameters, ServiceObject body) {
        return ServiceObject(match.str(1) + L" " + parameters.at(L"key") + L" " + body.toString());
      });
  m_parameters = {{L"key", L"value"}};
  m_body = std::wstring(L"body");
  EXPECT_EQ(ask(HttpMethod::kPost, L"mirn", {L"rescan"}), L"rescan value body");
}

}  // namespace
