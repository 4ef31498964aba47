#include "jobs/job.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>

#include "history/form_reading.h"
#include "history/moment.h"
#include "text.h"
#include "view/object_form.h"

namespace insight {

namespace {

boost::json::value formOfEnd(const Job& job) {
  if (job.isEndUnseen) return "unknown";
  return momentForm(job.endMs);
}

boost::json::value formOfRate(const Job& job) {
  const auto rate = job.progress.percentPerHour();
  if (!rate) return nullptr;
  return std::round(*rate * 100) / 100;
}

template <class Number>
boost::json::value numberForm(const std::optional<Number>& number) {
  if (!number) return nullptr;
  return *number;
}

}  // namespace

std::string jobKindOf(const std::wstring& action) {
  static const std::map<std::wstring, std::string> kKinds{{L"REBUILDING", "rebuild"},
                                                          {L"INITIALIZING", "initialize"},
                                                          {L"VERIFYING", "verify"},
                                                          {L"VERIFYING_AND_FIXING", "verify"},
                                                          {L"GENERAL_MIGRATION", "migrate"}};
  const auto found = kKinds.find(action);
  if (found != kKinds.end()) return found->second;
  std::string word = wideToUtf8(action);
  std::transform(word.begin(), word.end(), word.begin(),
                 [](unsigned char c) { return c == '_' ? '-' : static_cast<char>(std::tolower(c)); });
  return word;
}

boost::json::object formOf(const Job& job, std::int64_t nowMs) {
  const bool isRunning = job.outcome.empty();
  boost::json::object form;
  form["id"] = job.id;
  form["kind"] = job.kind;
  form["state"] = isRunning ? "running" : "ended";
  form["object"] = formOf(job.object);
  form["actor"] = job.actor;
  form["start"] = momentForm(job.startMs);
  form["seenFrom"] = momentForm(job.seenFromMs);
  form["seenTo"] = momentForm(job.seenToMs);
  form["end"] = formOfEnd(job);
  form["outcome"] = isRunning ? boost::json::value(nullptr) : boost::json::value(job.outcome);
  form["percent"] = numberForm(job.progress.percent());
  form["percentPerHour"] = formOfRate(job);
  form["timeLeftSeconds"] = isRunning ? numberForm(job.progress.secondsLeft(nowMs)) : nullptr;
  return form;
}

LastingRecord recordOf(const Job& job) {
  return {job.id, job.kind, wideToUtf8(job.object.id), job.seenFromMs, job.endMs, formOf(job, job.seenToMs)};
}

Job jobOf(const LastingRecord& record) {
  Job job;
  job.id = record.id;
  job.kind = record.kind;
  job.object = objectRefIn(record.body, "object");
  job.actor = textIn(record.body, "actor");
  job.startMs = momentIn(record.body, "start");
  job.seenFromMs = record.fromMs;
  job.seenToMs = momentIn(record.body, "seenTo").value_or(record.fromMs);
  job.endMs = record.toMs;
  job.isEndUnseen = textIn(record.body, "end") == "unknown";
  job.outcome = textIn(record.body, "outcome");
  if (job.endMs && job.outcome.empty()) {  // as the history ends what it was not told the end of
    job.isEndUnseen = true;
    job.outcome = "ended";
  }
  if (const auto percent = numberIn(record.body, "percent")) {
    job.progress = Progress(static_cast<std::uint64_t>(*percent));
  }
  return job;
}

}  // namespace insight
