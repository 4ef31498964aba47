#include "manual/manual_page.h"

#include <algorithm>
#include <set>

#include "arguments/values.h"
#include "commands/global_options.h"
#include "exit_status.h"
#include "troff.h"

namespace mirnctl {

namespace {

/// A summary and what is said besides, as one paragraph.
std::string sentencesOf(const std::string& first, const std::string& second) {
  std::string text = first;
  if (!text.empty() && text.back() != '.') text += '.';
  if (!second.empty()) text += (text.empty() ? "" : " ") + second;
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

/// What has a place, as it is typed.
std::string placesOf(const Command& command) {
  std::string places;
  const auto add = [&places](const std::string& word) { places += (places.empty() ? "" : " ") + word; };
  for (const Field& field : command.fields) {
    if (hasPlace(command, field)) add(field.name);
  }
  if (!command.rest.empty()) add('[' + command.rest + " ...]");
  return places;
}

std::string helpOfOption(const Field& field) {
  std::string text = sentencesOf(helpOf(field), field.isRequired ? "Needed." : "");
  return text.empty() ? "Goes into the request as it is." : text;
}

void writeCommand(TroffPage& page, const Command& command) {
  page.item(command.name(), placesOf(command), sentencesOf(command.summary, command.description));
  for (const Field& field : command.fields) {
    if (!hasPlace(command, field))
      page.item("    " + optionOf(field.name), typeNameOf(field), helpOfOption(field));
  }
}

void writeCommands(TroffPage& page, const std::vector<Command>& commands) {
  page.section("COMMANDS");
  page.paragraph(
      "An object is named by its id, its name, its serial number, or how its id begins. Sizes take K, M, G, "
      "T or "
      "P behind them, powers of 1024. Words may be written in either case. Lists have commas between.");
  std::set<std::string> told;
  for (const Command& first : commands) {
    if (!told.insert(first.noun).second) continue;
    page.subsection(first.noun.empty() ? "Alone" : first.noun);
    for (const Command& command : commands) {
      if (command.noun == first.noun) writeCommand(page, command);
    }
  }
}

void writeFiles(TroffPage& page) {
  page.section("ENVIRONMENT");
  page.item("MIRN_HOST", "", "Where the service is, unless --host or --profile says so.");
  page.item("MIRN_TOKEN_FILE", "", "The file with the token, unless --token-file or --profile says so.");
  page.item("NO_COLOR", "", "Where it is not empty, tables have no colours.");
  page.section("FILES");
  page.item(
      "~/.config/mirn/config", "",
      "Profiles: a section each, with the keys host, token-file and ca-file. The one named default is taken "
      "where nothing else is said. Token files are for their owner alone.");
  page.item("/run/mirn/host.sock", "", "The Unix socket of a service on this machine, which takes no token.");
}

}  // namespace

std::string manualPage(const std::vector<Command>& commands, const std::string& date) {
  TroffPage page("mirnctl", 1, MIRN_VERSION, date);
  page.section("NAME");
  page.paragraph("mirnctl - ask a storage service over HTTP");
  page.section("SYNOPSIS");
  page.paragraph("mirnctl [option ...] NOUN VERB [argument ...]");
  page.paragraph("mirnctl [option ...] VERB [argument ...]");
  page.section("DESCRIPTION");
  page.paragraph(
      "Asks a service and shows what it answers, to people and to scripts. A change is planned first: at a "
      "terminal "
      "its plan is told, and where something is lost by it the name of that is to be typed; without a "
      "terminal "
      "it takes --yes.");
  page.section("OPTIONS");
  for (const GlobalOption& option : globalOptions()) {
    page.item(option.name, option.valueName, sentencesOf(option.help, {}));
  }
  page.item("--help", "", "Tells what a command does and takes.");
  page.item("--version", "", "Tells the version of the program.");
  writeCommands(page, commands);
  page.section("EXIT STATUS");
  for (const ExitStatusRow& row : kExitStatuses) {
    page.item(std::to_string(static_cast<int>(row.status)), "", sentencesOf(row.meaning, {}));
  }
  writeFiles(page);
  page.section("SEE ALSO");
  page.paragraph("mirn-host(8)");
  return page.text();
}

}  // namespace mirnctl
