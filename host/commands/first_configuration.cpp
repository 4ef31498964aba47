#include "commands/first_configuration.h"

#include <fstream>
#include <stdexcept>
#include <vector>

#include "configuration/configuration_file.h"

namespace host {

namespace {

namespace fs = std::filesystem;

std::vector<std::string> namesIn(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (entry.is_directory()) names.push_back(entry.path().filename().u8string());
  }
  return names;
}

}  // namespace

std::string firstConfiguration(const fs::path& module, const fs::path& libraries) {
  std::string text = "module = " + module.u8string() + '\n';
  const std::vector<std::string> names = namesIn(libraries);
  if (names.size() == 1) text += "library = " + names.front() + '\n';
  return text + '\n' + sampleConfiguration();
}

void writeFirstConfiguration(const fs::path& file, const std::string& text) {
  if (fs::exists(file)) return;
  std::ofstream out(file);
  out << text << std::flush;
  if (!out) throw std::runtime_error("the configuration " + file.u8string() + " cannot be written");
}

}  // namespace host
