#include "commands/status.h"

#include "answers/record.h"
#include "answers/text_width.h"
#include "commands/findings.h"
#include "commands/machine_reads.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr int kLatest = 5;
constexpr std::size_t kIndent = 4;

const json::array* listAt(const json::value& record, std::string_view member) {
  const json::value* const list = memberOf(record, member);
  return list != nullptr && list->is_array() ? &list->get_array() : nullptr;
}

void tellCauses(const Context& context, const json::value& health) {
  const json::array* const causes = listAt(health, "causes");
  if (causes == nullptr || causes->empty()) return;
  context.terminal.out << "\nWhat is wrong\n";
  tellFindings(context, *causes);
}

void tellWork(const Context& context, const json::value& jobs) {
  const json::array running = recordsOf(jobs);
  if (running.empty()) return;
  context.terminal.out << "\nWork under way\n";
  for (const json::value& job : running) {
    const json::value* const left = memberOf(job, "timeLeftSeconds");
    const bool isKnown = left != nullptr && left->is_number();
    context.terminal.out << "  " << printableAt(job, "kind") << " of " << printableAt(job, "object.name")
                         << ", " << printableAt(job, "percent") << " %"
                         << (isKnown
                                 ? ", " + durationText(static_cast<std::int64_t>(left->to_number<double>())) +
                                       " left"
                                 : "")
                         << '\n';
  }
}

void tellLatest(const Context& context) {
  const json::array entries = latestEntries(context, kLatest);
  if (entries.empty()) return;
  context.terminal.out << "\nLatest\n";
  for (const json::value& entry : entries) {
    const std::string at = printable(textForPeople(json::value(textAt(entry, "at")), {}));
    context.terminal.out << hanging("  " + at + "  " + printableAt(entry, "kind") + "  " +
                                        wordsOfEntry(entry) + ' ' + printableAt(entry, "outcome"),
                                    kIndent, context.terminal.screen.width);
  }
}

}  // namespace

void status(const Context& context) {
  const json::value health = askedOf(context, "getHealth");
  const Wishes& wishes = context.wishes;
  std::ostream& out = context.terminal.out;
  if (wishes.presentation.format != Format::kTable) {
    out << shown(health, *context.document.find("getHealth"), wishes.presentation);
    return;
  }
  const json::value jobs = askedOf(context, "listJobs");
  const std::string severity = printableAt(health, "severity");
  out << context.destination.url() << ": " << coloured(severity, colourOf(severity), context.terminal.screen);
  const json::array* const causes = listAt(health, "causes");
  if (causes != nullptr && causes->empty()) out << ", nothing is wrong";
  out << '\n';
  tellCauses(context, health);
  tellWork(context, jobs);
  tellLatest(context);
  out << std::flush;
}

void ready(const Context& context) {
  const json::value readiness = askedOf(context, "getMachineReadiness");
  const Presentation& presentation = context.wishes.presentation;
  std::ostream& out = context.terminal.out;
  if (presentation.format != Format::kTable) {
    out << shown(readiness, *context.document.find("getMachineReadiness"), presentation);
    return;
  }
  const json::array* const items = listAt(readiness, "items");
  const std::string severity = printableAt(readiness, "severity");
  const bool isReady = items == nullptr || items->empty();
  out << context.destination.url() << ": " << coloured(severity, colourOf(severity), context.terminal.screen)
      << (isReady ? ", ready for the next fault" : "") << '\n';
  if (!isReady) {
    out << "\nWhat makes the next fault worse\n";
    tellFindings(context, *items);
  }
  out << std::flush;
}

}  // namespace mirnctl
