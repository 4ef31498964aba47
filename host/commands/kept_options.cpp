#include "commands/kept_options.h"

#include <filesystem>

#include "configuration/command_line.h"

namespace host {

namespace {

namespace fs = std::filesystem;

/// A library goes by its name or by a path.
bool isPath(const Setting& setting) {
  if (setting.option->argument == "FILE") return true;
  return setting.option->argument == "NAME|PATH" && fs::u8path(setting.value).has_parent_path();
}

}  // namespace

std::vector<std::string> keptOptions(const std::vector<std::string>& arguments) {
  std::vector<std::string> kept;
  for (const Setting& setting : readCommandLine(arguments)) {
    const std::string value =
        isPath(setting) ? fs::absolute(fs::u8path(setting.value)).u8string() : setting.value;
    kept.push_back("--" + setting.option->name + '=' + value);
  }
  return kept;
}

}  // namespace host
