#include <algorithm>
#include <unordered_map>

#include "history/moment.h"
#include "readiness/readiness_checks.h"
#include "text.h"
#include "view/object_path.h"

namespace insight {

namespace {

constexpr std::int64_t kDayMs = std::int64_t{24} * 60 * 60 * 1000;

/// By the id of the volume.
using LastVerifications = std::unordered_map<std::wstring, std::int64_t>;

LastVerifications lastVerificationsIn(const MachinePast& past) {
  LastVerifications last;
  for (const Job& job : past.jobs) {
    if (job.kind != "verify" || job.outcome != "completed" || !job.endMs) continue;
    std::int64_t& end = last[job.object.id];
    end = std::max(end, *job.endMs);
  }
  return last;
}

std::string daysText(std::int64_t days) { return std::to_string(days) + (days == 1 ? " day" : " days"); }

/// One that was never seen verified, as far back as it matters or not that far.
ReadinessLine neverVerified(const VolumeView& volume, const ReadinessFacts& facts, bool isKnown) {
  const std::string name = wideToUtf8(volume.name);
  const std::string days = daysText(facts.verifiedWithinDays);
  ReadinessLine line;
  line.severity = isKnown ? Severity::kWarning : Severity::kInfo;
  line.details = {{"verifiedAt", isKnown ? boost::json::value(nullptr) : boost::json::value("unknown")}};
  line.text = isKnown ? "Volume " + name + " was never seen verified, at least for " + days + '.'
                      : "Whether volume " + name + " was verified within " + days + " is not known.";
  return line;
}

ReadinessLine verifiedLongAgo(const VolumeView& volume, std::int64_t atMs, std::int64_t nowMs) {
  ReadinessLine line;
  line.severity = Severity::kWarning;
  line.details = {{"verifiedAt", momentForm(atMs)}};
  line.text = "Volume " + wideToUtf8(volume.name) + " was verified last " +
              daysText((nowMs - atMs) / kDayMs) + " ago.";
  return line;
}

}  // namespace

NextStep stepOfVerifying(const VolumeView& volume) {
  return {"verifyVolume", {{"volumeId", volume.id}, {"action", L"START"}, {"repair", L"false"}}};
}

CheckFindings lookForVerifications(const ReadinessLook& look) {
  const ReadinessFacts& facts = look.facts;
  const std::int64_t wanted = facts.nowMs - facts.verifiedWithinDays * kDayMs;
  const bool isKnown = facts.past->jobsFromMs <= wanted;
  const LastVerifications verified = lastVerificationsIn(*facts.past);
  CheckFindings findings;
  for (const VolumeView& volume : look.machine().volumes) {
    if (volume.level == L"RAID_0") continue;  // there is nothing to hold its data against
    const auto last = verified.find(volume.id);
    if (last != verified.end() && last->second >= wanted) continue;
    ReadinessLine line = last == verified.end() ? neverVerified(volume, facts, isKnown)
                                                : verifiedLongAgo(volume, last->second, facts.nowMs);
    line.objects = {refOf(volume)};
    if (!look.machine().workOn(volume.id)) line.steps = {stepOfVerifying(volume)};
    if (last == verified.end() && !isKnown) {
      findings.doubt = "The history tells of jobs since " +
                       std::string(momentForm(facts.past->jobsFromMs).as_string()) + " only.";
    }
    findings.lines.push_back(std::move(line));
  }
  return findings;
}

}  // namespace insight
