#include "commands/global_options.h"

#include <algorithm>

#include "arguments/values.h"

namespace mirnctl {

namespace {

constexpr const char* kFormats[] = {"table", "json", "jsonl", "csv"};  // in the order of `Format`

void setFormat(Settings& settings, const std::string& text) {
  for (std::size_t place = 0; place < std::size(kFormats); ++place) {
    if (text == kFormats[place]) settings.wishes.presentation.format = static_cast<Format>(place);
  }
}

}  // namespace

const std::vector<GlobalOption>& globalOptions() {
  using Value = OptionValue;
  static const std::vector<GlobalOption> options{
      {"--host",
       Value::kText,
       "TEXT",
       "Where the service is: http://HOST:PORT, https://HOST:PORT, unix:PATH",
       {},
       [](Settings& settings, const std::string& text) { settings.directions.host = text; }},
      {"--token-file",
       Value::kFile,
       "FILE",
       "The file with the token",
       {},
       [](Settings& settings, const std::string& text) { settings.directions.tokenFile = text; }},
      {"--profile",
       Value::kProfile,
       "NAME",
       "The profile that tells both",
       {},
       [](Settings& settings, const std::string& text) { settings.directions.profile = text; }},
      {"--ca-file",
       Value::kFile,
       "FILE",
       "Certificates to trust besides the system's",
       {},
       [](Settings& settings, const std::string& text) { settings.directions.caFile = text; }},
      {"--bundle",
       Value::kFile,
       "FILE",
       "A bundle that answers in the place of a service",
       {},
       [](Settings& settings, const std::string& text) { settings.directions.bundle = text; }},
      {"--output",
       Value::kWord,
       "table|json|jsonl|csv",
       "A table for people, or all fields for scripts",
       {std::begin(kFormats), std::end(kFormats)},
       setFormat},
      {"--columns",
       Value::kColumns,
       "A,B",
       "These alone, with commas between",
       {},
       [](Settings& settings, const std::string& text) {
         settings.wishes.presentation.columns = partsOf(text);
       }},
      {"--sort",
       Value::kColumn,
       "A",
       "By this column; -COLUMN: the largest first",
       {},
       [](Settings& settings, const std::string& text) { settings.wishes.presentation.sortBy = text; }},
      {"--yes",
       Value::kNone,
       "",
       "Asks nobody",
       {},
       [](Settings& settings, const std::string&) { settings.wishes.isSure = true; }},
      {"--dry-run",
       Value::kNone,
       "",
       "Tells what a change would do, and does nothing",
       {},
       [](Settings& settings, const std::string&) { settings.wishes.isDryRun = true; }},
      {"--wait",
       Value::kNone,
       "",
       "Waits for the work that a change begins",
       {},
       [](Settings& settings, const std::string&) { settings.wishes.waits = true; }},
      {"--curl",
       Value::kNone,
       "",
       "Prints the request as a command, and does not send it",
       {},
       [](Settings& settings, const std::string&) { settings.wishes.asCurl = true; }},
  };
  return options;
}

const GlobalOption* globalOption(const std::string& name) {
  const auto& all = globalOptions();
  const auto found =
      std::find_if(all.begin(), all.end(), [&name](const GlobalOption& each) { return name == each.name; });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace mirnctl
