#include "commands/plan.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "answers/record.h"
#include "answers/text_width.h"
#include "document/schema.h"
#include "exit_status.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

const json::array kNothing;

const json::array& listIn(const json::value& plan, std::string_view member) {
  const json::value* const list = memberOf(plan, member);
  return list != nullptr && list->is_array() ? list->get_array() : kNothing;
}

std::string nameAt(const json::value& value) {
  const std::string name = printableAt(value, "object.name");
  return name.empty() ? printableAt(value, "object.id") : name;
}

std::string likely(const json::value& work) {
  const json::value* const seconds = memberOf(work, "likelySeconds");
  if (seconds == nullptr || !seconds->is_number()) return ", for an unknown time";
  return ", likely for " + durationText(seconds->to_number<std::int64_t>());
}

}  // namespace

void tellPlan(const json::value& plan, std::ostream& out, const Screen& screen) {
  for (const json::value& effect : listIn(plan, "effects")) out << printableAt(effect, "text") << '\n';
  for (const json::value& loss : listIn(plan, "lost")) {
    out << coloured("Lost: ", Colour::kBad, screen) << printableAt(loss, "text") << '\n';
  }
  for (const json::value& volume : listIn(plan, "redundancy")) {
    out << "Until it is over " << nameAt(volume) << " may lose " << printableAt(volume, "mayFailMeanwhile")
        << " disks\n";
  }
  for (const json::value& work : listIn(plan, "work")) {
    out << "Then: " << printableAt(work, "kind") << " of " << nameAt(work) << likely(work) << '\n';
  }
  for (const json::value& warning : listIn(plan, "warnings")) {
    out << coloured("Warning: ", Colour::kNotice, screen) << printable(plainText(warning)) << '\n';
  }
}

void agree(const Context& context, const json::value& plan) {
  Terminal& terminal = context.terminal;
  const json::array& lost = listIn(plan, "lost");
  if (context.wishes.isSure) return;
  if (lost.empty()) {
    if (terminal.showsProgress) tellPlan(plan, terminal.err, terminal.screen);
    return;
  }
  tellPlan(plan, terminal.err, terminal.screen);
  if (!terminal.asksPeople) {
    throw Failure(ExitStatus::kRefused, "something would be lost, and nobody is here to agree",
                  "--yes agrees");
  }
  const std::string name = nameAt(lost.front());
  terminal.err << "Type " << name << " to go on: " << std::flush;
  std::string typed;
  if (!std::getline(terminal.in, typed) || typed != name) {
    throw Failure(ExitStatus::kRefused, "nothing was done");
  }
}

std::string structureOf(const json::value& plan) {
  return plan.is_object() ? textOf(plan.get_object(), "structure") : "";
}

bool hasWork(const json::value& plan) { return !listIn(plan, "work").empty(); }

}  // namespace mirnctl
