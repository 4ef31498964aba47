#include "commands/findings.h"

#include <algorithm>
#include <cctype>

#include "answers/record.h"
#include "answers/text_width.h"
#include "arguments/values.h"
#include "document/schema.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr std::size_t kIndent = 4;

/// A word that a shell takes for one.
std::string asWord(const std::string& text) {
  const bool isPlain = !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
    return std::isalnum(c) != 0 || c == '-' || c == '_' || c == '.' || c == ':' || c == '/';
  });
  return isPlain ? text : '"' + text + '"';
}

std::string argumentOf(const Context& context, const Field& field, const json::object& arguments) {
  const std::string known = textOf(arguments, field.name);
  if (known.empty()) return '<' + field.name + '>';
  return asWord(field.refersTo.empty() ? known : context.names.nameOf(field.refersTo, known));
}

void tellFinding(const Context& context, const json::value& finding) {
  const Screen& screen = context.terminal.screen;
  const std::string severity = printableAt(finding, "severity");
  const std::string since = printable(textForPeople(json::value(textAt(finding, "since")), {}));
  const std::string text =
      severity + "  " + printableAt(finding, "text") + (since == "-" ? "" : " (since " + since + ')');
  // The colour is put in afterwards: it takes no room.
  const std::string told = hanging("  " + text, kIndent, screen.width);
  context.terminal.out << "  " << coloured(severity, colourOf(severity), screen)
                       << told.substr(2 + severity.size());
  const json::value* const steps = memberOf(finding, "steps");
  if (steps == nullptr || !steps->is_array()) return;
  for (const json::value& step : steps->get_array()) {
    if (!step.is_object()) continue;
    const std::string line =
        commandLineOf(context, printableAt(step, "operation"), objectOf(step.get_object(), "arguments"));
    if (!line.empty()) context.terminal.out << std::string(kIndent, ' ') << "next: " << line << '\n';
  }
}

}  // namespace

std::string commandLineOf(const Context& context, const std::string& id, const json::object& arguments) {
  const Operation* const operation = context.document.find(id);
  if (operation == nullptr) return {};
  std::string line = "mirnctl";
  for (const std::string& word : {operation->noun, operation->verb}) {
    if (!word.empty()) line += ' ' + word;
  }
  for (const Field& field : operation->fields) {
    if (field.place == Place::kPath) line += ' ' + argumentOf(context, field, arguments);
  }
  for (const Field& field : operation->fields) {
    const bool isTold = field.isRequired || arguments.contains(field.name);
    if (field.place != Place::kPath && isTold) {
      line += ' ' + optionOf(field.name) + ' ' + argumentOf(context, field, arguments);
    }
  }
  return line;
}

void tellFindings(const Context& context, const json::value& findings) {
  if (!findings.is_array()) return;
  for (const json::value& finding : findings.get_array()) tellFinding(context, finding);
}

}  // namespace mirnctl
