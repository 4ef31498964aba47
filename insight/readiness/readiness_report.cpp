#include "readiness/readiness_report.h"

#include <algorithm>
#include <utility>

#include "health/machine_causes.h"
#include "readiness/readiness_checks.h"

namespace insight {

namespace {

CheckFindings findingsOf(const ReadinessCheck& check, const ReadinessLook& look) {
  if (!look.machine().takenAt) return {{}, "There is no picture of the machine yet."};
  if (check.needsPast && !look.facts.past) return {{}, look.facts.whyNoPast};
  return check.look(look);
}

void addOldPicture(const Cause& cause, ReadinessReport& report) {
  report.lines.push_back({cause.kind, cause.severity, {cause.object}, cause.text, {}, cause.steps});
}

}  // namespace

const std::vector<ReadinessCheck>& readinessChecks() {
  static const std::vector<ReadinessCheck> kChecks{
      {"no-spare-fits", false, lookForSpares},        {"not-verified", true, lookForVerifications},
      {"mixed-firmware", false, lookForFirmware},     {"exposed", true, lookForExposure},
      {"rebuilds-slower", true, lookForRebuildTimes},
  };
  return kChecks;
}

ReadinessReport readinessOf(const ReadinessFacts& facts) {
  const CauseIndex causes(causesOf(facts.machine, static_cast<std::uint64_t>(facts.nowMs)));
  const ExposureOfVolumes exposure =
      facts.past ? exposureOf(facts.machine, *facts.past, facts.nowMs) : ExposureOfVolumes();
  const ReadinessLook look{facts, causes, exposure};
  ReadinessReport report;
  report.position = facts.machine.position;
  report.takenAt = facts.machine.takenAt;
  if (facts.past) report.historyFromMs = facts.past->fromMs;
  report.verifiedWithinDays = facts.verifiedWithinDays;
  report.exposure = exposedMonths(exposure, facts.past, facts.nowMs);
  if (causes.oldPicture() != nullptr) addOldPicture(*causes.oldPicture(), report);
  for (const ReadinessCheck& check : readinessChecks()) {
    CheckFindings findings = findingsOf(check, look);
    report.checks.push_back({check.kind, !findings.lines.empty(), std::move(findings.doubt)});
    for (ReadinessLine& line : findings.lines) {
      line.kind = check.kind;
      report.lines.push_back(std::move(line));
    }
  }
  std::stable_sort(
      report.lines.begin(), report.lines.end(),
      [](const ReadinessLine& one, const ReadinessLine& other) { return one.severity > other.severity; });
  if (!report.lines.empty()) report.severity = report.lines.front().severity;
  return report;
}

}  // namespace insight
