#include "configuration/command_line.h"

#include <boost/program_options.hpp>
#include <map>
#include <sstream>

#include "configuration/option_table.h"
#include "configuration/platform_options.h"

namespace host {

namespace {

namespace po = boost::program_options;

/// A switch needs no value: then it is on.
const po::value_semantic* read(const Option& option) {
  auto* const value = po::value<std::string>();
  return option.isSwitch() ? value->implicit_value(kOn) : value;
}

const po::value_semantic* shown(const Option& option) {
  if (option.isSwitch()) return po::bool_switch();
  auto* const value = po::value<std::string>()->value_name(option.argument);
  return option.defaultText.empty() ? value : value->default_value(option.defaultText);
}

po::options_description readOptions() {
  po::options_description all;
  for (const Option& option : optionTable()) {
    if (option.isForLine()) all.add_options()(option.name.c_str(), read(option));
  }
  return all;
}

po::options_description shownOptions() {
  std::map<OptionGroup, po::options_description> groups;
  for (const Option& option : optionTable()) {
    if (!option.isForLine()) continue;
    const auto group = groups.try_emplace(option.group, headingOf(option.group)).first;
    group->second.add_options()(option.name.c_str(), shown(option), option.fullHelp().c_str());
  }
  po::options_description all;
  for (const auto& [group, options] : groups) all.add(options);
  return all;
}

/// "KEY = VALUE" of each option that is for the configuration file alone, and what it is.
void writeKeys(std::ostream& out) {
  const Option* first = nullptr;
  for (const Option& option : optionTable()) {
    if (option.isForLine()) continue;
    if (first == nullptr) out << '\n' << headingOf(option.group) << ":\n";
    first = &option;
    out << "  " << option.name << " = " << option.argument << "\n      " << option.fullHelp();
    if (!option.defaultText.empty()) out << " (=" << option.defaultText << ')';
    out << '\n';
  }
}

/// `word` is no option of the command line. What stands in the file only is told without its value.
std::string faultOf(const std::string& word, const std::string& reason) {
  const std::string name = word.substr(word.find_first_not_of('-'));
  const std::string key = name.substr(0, name.find('='));
  const Option* const option = findOption(key);
  if (option == nullptr || option->isForLine()) return reason + whyMissing(name);
  return "unrecognised option '--" + key + "': it stands in the configuration file only";
}

po::parsed_options parsed(const std::vector<std::string>& arguments, const po::options_description& known) {
  constexpr auto kStyle = po::command_line_style::allow_long | po::command_line_style::long_allow_adjacent |
                          po::command_line_style::long_allow_next;
  try {
    return po::command_line_parser(arguments).options(known).positional({}).style(kStyle).run();
  } catch (const po::unknown_option& error) {
    throw UsageError(faultOf(error.get_option_name(), error.what()));
  } catch (const po::error& error) {
    throw UsageError(error.what());
  }
}

}  // namespace

std::vector<Setting> readCommandLine(const std::vector<std::string>& arguments) {
  const po::options_description known = readOptions();  // `parsed_options` points to it
  std::vector<Setting> settings;
  for (const po::option& said : parsed(arguments, known).options) {
    settings.push_back({findOption(said.string_key), said.value.empty() ? kOn : said.value.front(),
                        "the option '--" + said.string_key + "'"});
  }
  return settings;
}

std::string commandLineHelp() {
  std::ostringstream text;
  text << shownOptions();
  writeKeys(text);
  return text.str();
}

}  // namespace host
