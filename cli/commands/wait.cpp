#include "commands/wait.h"

#include <boost/algorithm/string/replace.hpp>
#include <chrono>
#include <cmath>
#include <thread>

#include "answers/record.h"
#include "answers/text_width.h"
#include "commands/plan.h"
#include "exit_status.h"
#include "wire/answers.h"
#include "wire/encoding.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kLook{500};
/// Work shows as a job at the next look at the machine.
constexpr std::chrono::seconds kLongestStart{20};
constexpr int kBarWidth = 20;

const Operation& operationOf(const Context& context, const char* id) {
  const Operation* const operation = context.document.find(id);
  if (operation == nullptr) throw Failure(ExitStatus::kUsage, "this service tells of no jobs");
  return *operation;
}

json::array jobs(const Context& context, const std::string& state) {
  return recordsOf(get(context.service, operationOf(context, "listJobs").path + "?limit=100&state=" + state));
}

/// What comes has a name and no id yet.
bool isAbout(const json::value& job, const json::value& work) {
  if (textAt(job, "kind") != textAt(work, "kind")) return false;
  const std::string id = textAt(work, "object.id");
  return id.empty() ? textAt(job, "object.name") == textAt(work, "object.name")
                    : textAt(job, "object.id") == id;
}

std::string jobOf(const Context& context, const json::value& work, const KnownJobs& before) {
  const auto deadline = Clock::now() + kLongestStart;
  do {
    for (const char* state : {"running", "ended"}) {
      for (const json::value& job : jobs(context, state)) {
        const std::string id = textAt(job, "id");
        if (before.count(id) == 0 && isAbout(job, work)) return id;
      }
    }
    std::this_thread::sleep_for(kLook);
  } while (Clock::now() < deadline);
  return {};
}

std::string barOf(double percent) {
  const int full = static_cast<int>(std::lround(percent * kBarWidth / 100));
  std::string bar = "[";
  for (int place = 0; place < kBarWidth; ++place) bar += place < full ? '#' : '.';
  return bar + ']';
}

}  // namespace

std::string progressOf(const json::value& job) {
  const json::value* const percent = memberOf(job, "percent");
  const double done = percent != nullptr && percent->is_number() ? percent->to_number<double>() : 0;
  std::string line = textAt(job, "kind") + " of " + printable(textAt(job, "object.name")) + " " +
                     barOf(done) + " " + std::to_string(std::lround(done)) + " %";
  const json::value* const rate = memberOf(job, "percentPerHour");
  if (rate != nullptr && rate->is_number()) {
    line += ", " + std::to_string(std::lround(rate->to_number<double>())) + " % an hour";
  }
  const json::value* const left = memberOf(job, "timeLeftSeconds");
  if (left != nullptr && left->is_number()) {
    line += ", " + durationText(std::llround(left->to_number<double>())) + " left";
  }
  return line;
}

KnownJobs knownJobs(const Context& context) {
  KnownJobs known;
  for (const char* state : {"running", "ended"}) {
    for (const json::value& job : jobs(context, state)) known.insert(textAt(job, "id"));
  }
  return known;
}

void waitForJob(const Context& context, const std::string& id) {
  requireService(context, "wait for a job");
  const std::string target =
      boost::algorithm::replace_all_copy(operationOf(context, "getJob").path, "{id}", percentEncoded(id));
  std::ostream& err = context.terminal.err;
  json::value job = get(context.service, target);
  for (; textAt(job, "outcome").empty(); job = get(context.service, target)) {
    if (context.terminal.showsProgress) err << "\r\033[K" << progressOf(job) << std::flush;
    std::this_thread::sleep_for(kLook);
  }
  const std::string outcome = textAt(job, "outcome");
  if (context.terminal.showsProgress) err << "\r\033[K";
  const std::string told =
      textAt(job, "kind") + " of " + printable(textAt(job, "object.name")) + ": " + outcome;
  if (outcome == "failed") throw Failure(ExitStatus::kJobFailed, told, "mirnctl status tells what is wrong");
  err << told << std::endl;
}

void waitForWork(const Context& context, const json::value& plan, const KnownJobs& before) {
  const json::value* const works = memberOf(plan, "work");
  if (works == nullptr || !works->is_array()) return;
  for (const json::value& work : works->get_array()) {
    const std::string id = jobOf(context, work, before);
    if (id.empty()) {
      throw Failure(ExitStatus::kInternal, "the work did not show as a job",
                    "mirnctl jobs list tells what runs");
    }
    waitForJob(context, id);
  }
}

}  // namespace mirnctl
