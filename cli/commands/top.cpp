#include "commands/top.h"

#include <algorithm>
#include <chrono>

#include "answers/record.h"
#include "answers/text_width.h"
#include "commands/machine_reads.h"
#include "commands/wait.h"
#include "exit_status.h"
#include "terminal/live_screen.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kPause{2};
constexpr int kLatest = 50;

/// A line whose first word may have a colour.
struct Line {
  std::string word;
  Colour colour = Colour::kNone;
  std::string rest;
};

struct Section {
  std::string title;
  std::vector<Line> lines;
};

std::string fitted(const Line& line, const Screen& screen) {
  const std::string word = shortened(line.word, screen.width);
  return coloured(word, line.colour, screen) + shortened(line.rest, screen.width - widthOf(word));
}

Section causesOf(const json::value& health) {
  Section section{"What is wrong", {}};
  const json::value* const causes = memberOf(health, "causes");
  if (causes == nullptr || !causes->is_array()) return section;
  for (const json::value& cause : causes->get_array()) {
    const std::string severity = printableAt(cause, "severity");
    section.lines.push_back({"  " + severity, colourOf(severity), "  " + printableAt(cause, "text")});
  }
  return section;
}

Section workOf(const json::value& jobs) {
  Section section{"Work under way", {}};
  for (const json::value& job : recordsOf(jobs)) section.lines.push_back({"  ", {}, progressOf(job)});
  return section;
}

Section latestOf(const json::value& history) {
  Section section{"Latest", {}};
  for (const json::value& entry : recordsOf(history)) {
    section.lines.push_back({"  ",
                             {},
                             printable(textForPeople(json::value(textAt(entry, "at")), {})) + "  " +
                                 printableAt(entry, "kind") + "  " + wordsOfEntry(entry) + ' ' +
                                 printableAt(entry, "outcome")});
  }
  return section;
}

/// In at most `room` lines, with a blank one and the title ahead; nothing where not one line has room.
void add(const Section& section, std::size_t room, const Screen& screen, std::vector<std::string>& lines) {
  constexpr std::size_t kHead = 2;
  if (section.lines.empty() || room <= kHead) return;
  lines.emplace_back();
  lines.push_back(shortened(section.title, screen.width));
  const bool isCut = section.lines.size() > room - kHead;
  const std::size_t count = isCut ? room - kHead - 1 : section.lines.size();
  for (std::size_t place = 0; place < count; ++place) lines.push_back(fitted(section.lines[place], screen));
  if (isCut) {
    lines.push_back(
        shortened("  … and " + std::to_string(section.lines.size() - count) + " more", screen.width));
  }
}

Overview seen(const Context& context) {
  return {context.destination.url(),
          {},
          askedOf(context, "getHealth"),
          askedOf(context, "listJobs"),
          latestEntries(context, kLatest)};
}

/// Anew; where that is not to be had, why, beside what was known.
void renew(const Context& context, Overview& overview) {
  try {
    overview = seen(context);
  } catch (const Failure& failure) {
    const bool mayPass =
        failure.status() == ExitStatus::kUnreachable || failure.status() == ExitStatus::kInternal;
    if (!mayPass) throw;
    overview.trouble = failure.what();
  }
}

}  // namespace

std::vector<std::string> linesOf(const Overview& overview, std::size_t height, const Screen& screen) {
  const std::string severity =
      overview.trouble.empty() ? printableAt(overview.health, "severity") : "unknown";
  const std::string taken = textForPeople(json::value(textAt(overview.health, "takenAt")), {});
  std::vector<std::string> lines{
      fitted({severity, colourOf(severity), "  " + printable(overview.place + "  " + taken) + "  (q ends)"},
             screen)};
  if (!overview.trouble.empty()) {
    lines.push_back(fitted({printable(overview.trouble), Colour::kBad, {}}, screen));
  }
  const Section causes = causesOf(overview.health);
  const Section work = workOf(overview.jobs);
  // Work has room ahead of all, causes ahead of what happened; a third is kept for that.
  const auto left = [&] { return height > lines.size() ? height - lines.size() : 0; };
  const std::size_t forWork = work.lines.empty() ? 0 : std::min(work.lines.size() + 2, left() / 3);
  const std::size_t forLatest = left() / 3;
  add(causes, left() - forWork - forLatest, screen, lines);
  add(work, left() - std::min(left(), forLatest), screen, lines);
  add(latestOf(overview.history), left(), screen, lines);
  if (lines.size() > height) lines.resize(height);
  return lines;
}

void top(const Context& context) {
  requireService(context, "be looked at as it changes");
  if (!context.terminal.asksPeople || context.terminal.screen.width == 0) {
    throw Failure(ExitStatus::kUsage, "top needs a terminal", "mirnctl status tells the same once");
  }
  Overview overview = seen(context);
  LiveScreen live;
  for (;;) {
    const auto [width, height] = live.size();
    live.show(linesOf(overview, height, {width, context.terminal.screen.hasColours}));
    const auto again = Clock::now() + kPause;
    auto wish = LiveScreen::Wish::kNothing;
    for (auto now = Clock::now(); now < again && wish == LiveScreen::Wish::kNothing; now = Clock::now()) {
      wish = live.await(std::chrono::ceil<std::chrono::milliseconds>(again - now));
    }
    if (wish == LiveScreen::Wish::kEnd) return;
    if (wish == LiveScreen::Wish::kNothing) renew(context, overview);
  }
}

}  // namespace mirnctl
