// A plug-in of one route, to run the example host over.
#include "base_plugin.h"
#include "http_method.h"

namespace {

class ToyPlugin final : public ovra::BasePlugin {
 public:
  ToyPlugin() {
    m_routes[HttpMethod::kGet].push_back({L"mirn/state", [](const auto&, const auto&, const auto&) {
                                            ovra::data_transfer::ServiceObject answer;
                                            answer.member(L"state") = std::wstring(L"PLAYING");
                                            return answer;
                                          }});
  }
  bool initialize() override { return true; }
  void finish() override {}
  std::int32_t getStatus() override { return 0; }
};

}  // namespace

extern "C" void discover_plugin(PluginDescription& out) { out.name = L"Toy"; }

extern "C" bool register_plugin(PluginRegistrar& registrar) {
  return registrar.addPlugin(std::make_shared<ToyPlugin>());
}
