// The smallest host: loads a plug-in module, asks for its state and lets go of it again.
#include <dlfcn.h>
#include <mirn/http_method.h>
#include <mirn/plugin_interface.h>
#include <mirn/text.h>

#include <iostream>

namespace {

class Registrar final : public PluginRegistrar {
 public:
  bool addPlugin(std::shared_ptr<ovra::plugin_interface> plugin) override {
    m_plugin = std::dynamic_pointer_cast<ovra::service_plugin_interface>(plugin);
    return m_plugin != nullptr;
  }
  std::shared_ptr<ovra::service_plugin_interface> m_plugin;
};

// Nothing of the plug-in, its exceptions included, may outlive this function: their code is the module's.
int talkTo(void* module) try {
  const auto discover = reinterpret_cast<DiscoverPluginFunction>(dlsym(module, kDiscoverPluginName));
  const auto enroll = reinterpret_cast<RegisterPluginFunction>(dlsym(module, kRegisterPluginName));
  if (!discover || !enroll) throw std::runtime_error("this is no plug-in module");

  PluginDescription description;
  discover(description);
  std::cout << wideToUtf8(description.name) << ", interface " << wideToUtf8(description.apiVersion) << '\n';

  Registrar registrar;
  if (!enroll(registrar)) throw std::runtime_error("the plug-in was not registered");
  ovra::service_plugin_interface& plugin = *registrar.m_plugin;
  if (!plugin.initialize()) throw std::runtime_error("the plug-in does not start");
  auto answer = plugin.handleRequest(L"mirn", HttpMethod::kGet, {L"state"}, {}, {});
  std::cout << "state: " << wideToUtf8(answer.member(L"state").toString()) << '\n';
  plugin.finish();
  return 0;
} catch (const std::exception& error) {
  std::cerr << "example_host: " << error.what() << '\n';
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  void* const module = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
  if (!module) {
    std::cerr << "example_host: " << (argc == 2 ? dlerror() : "usage: example_host <module>") << '\n';
    return 1;
  }
  const int result = talkTo(module);
  dlclose(module);
  return result;
}
