// Prints what a module's plug-in tells of itself, as JSON: describe_plugin MODULE. Initialises nothing.
#include <iostream>

#include "answers/json_writer.h"
#include "plugin/hosted_plugin.h"
#include "plugin_extensions.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: describe_plugin MODULE\n";
    return 2;
  }
  const host::LoadedModule module(argv[1]);
  host::HostedPlugin hosted(module);
  auto* const described = dynamic_cast<ovra::described_plugin_1*>(&hosted.plugin());
  if (!described) {
    std::cerr << argv[1] << ": the plug-in does not describe itself\n";
    return 1;
  }
  std::cout << host::writeJson(described->describe()) << '\n';
  return 0;
}
