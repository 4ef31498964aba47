#include "readiness/readiness_checks.h"
#include "text.h"
#include "view/object_path.h"

namespace insight {

namespace {

constexpr std::int64_t kSecondMs = 1000;
constexpr std::int64_t kTenthOfAnHourMs = std::int64_t{6} * 60 * kSecondMs;

/// "12.5 hours".
std::string hoursText(std::int64_t milliseconds) {
  const std::int64_t tenths = (milliseconds + kTenthOfAnHourMs / 2) / kTenthOfAnHourMs;
  return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10) + " hours";
}

/// A spare shortens the next time; where there is one, what is left is to see that all is as it was.
NextStep stepAfterwards(const ReadinessLook& look, const VolumeView& volume) {
  if (look.causes.lacksSpare(volume.arrayId)) return stepOfMarkingASpare();
  return stepOfVerifying(volume);
}

ReadinessLine lineOf(const ReadinessLook& look, const VolumeView& volume, std::int64_t exposedMs) {
  const Cause* const cause = look.causes.exposing(volume.id);
  ReadinessLine line;
  line.severity = cause == nullptr ? Severity::kInfo : Severity::kWarning;
  line.objects = {refOf(volume)};
  line.text = "Volume " + wideToUtf8(volume.name) + " lacked redundancy for " + hoursText(exposedMs) +
              " in " + std::to_string(kToldMonths) + " months" +
              (cause == nullptr ? "." : ", and lacks it now.");
  line.details = {{"exposedSeconds", exposedMs / kSecondMs}};
  if (cause != nullptr) {
    line.steps = cause->steps;
  } else {
    line.steps = {stepAfterwards(look, volume)};
  }
  return line;
}

}  // namespace

CheckFindings lookForExposure(const ReadinessLook& look) {
  const TimeSpan told{beginOfToldMonths(look.facts.nowMs), look.facts.nowMs};
  CheckFindings findings;
  for (const auto& [id, spans] : look.exposure) {
    const VolumeView* const volume = look.machine().volume(id);
    const std::int64_t exposedMs = timeWithin(spans, told);
    if (volume != nullptr && exposedMs > 0) findings.lines.push_back(lineOf(look, *volume, exposedMs));
  }
  return findings;
}

}  // namespace insight
