#include "configuration/configuration_file.h"

#include <boost/algorithm/string/trim.hpp>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "configuration/option_table.h"
#include "configuration/platform_options.h"

namespace host {

namespace {

constexpr std::size_t kTextWidth = 78;

std::string trimmed(const std::string& text) { return boost::algorithm::trim_copy(text); }

/// `place` is the file and line, for who has to mend it.
Setting settingIn(const std::string& line, const std::string& place) {
  const std::size_t equals = line.find('=');
  if (equals == std::string::npos) throw UsageError(place + "this is not KEY = VALUE");
  const std::string key = trimmed(line.substr(0, equals));
  const std::string value = trimmed(line.substr(equals + 1));
  const Option* const option = findOption(key);
  if (option == nullptr) throw UsageError(place + "unrecognised key '" + key + "'" + whyMissing(key));
  if (!option->isForFile()) {
    throw UsageError(place + "the key '" + key + "' is for the command line alone");
  }
  if (value.empty()) throw UsageError(place + "the key '" + key + "' has no value");
  return {option, value, place + "the key '" + key + "'"};
}

void writeComment(std::ostream& out, const std::string& text) {
  std::istringstream words(text);
  std::string line = "#";
  for (std::string word; words >> word;) {
    if (line.size() + 1 + word.size() > kTextWidth) {
      out << line << '\n';
      line = "#";
    }
    line += ' ' + word;
  }
  out << line << '\n';
}

void writeSample(std::ostream& out, const Option& option) {
  std::string text = option.fullHelp();
  if (!option.range.empty()) text += "; " + option.range;
  writeComment(out, text);
  out << '#' << option.name << " = " << (option.defaultText.empty() ? option.argument : option.defaultText)
      << "\n\n";
}

}  // namespace

std::vector<Setting> readConfiguration(std::istream& text, const std::string& name) {
  std::vector<Setting> settings;
  std::string line;
  for (std::size_t number = 1; std::getline(text, line); ++number) {
    line = trimmed(line);
    if (line.empty() || line.front() == '#') continue;
    settings.push_back(settingIn(line, name + ':' + std::to_string(number) + ": "));
  }
  return settings;
}

std::vector<Setting> readConfigurationFile(const std::string& path) {
  std::ifstream file(std::filesystem::u8path(path));
  std::vector<Setting> settings = readConfiguration(file, path);
  if (!file.is_open() || file.bad()) throw UsageError(path + ": this file cannot be read");
  return settings;
}

std::string sampleConfiguration() {
  std::ostringstream out;
  OptionGroup group = OptionGroup::kProgram;
  for (const Option& option : optionTable()) {
    if (!option.isForFile()) continue;
    if (option.group != group) out << "## " << headingOf(option.group) << "\n\n";
    group = option.group;
    writeSample(out, option);
  }
  return out.str();
}

}  // namespace host
