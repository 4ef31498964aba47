#include "readiness/exposure.h"

#include <algorithm>

#include "health/cause_kinds.h"
#include "history/moment.h"
#include "view/object_form.h"

namespace insight {

namespace {

constexpr wchar_t kRaid0[] = L"RAID_0";
constexpr int kMonths = 12;

/// A month of the calendar, counted from the beginning of the year 0.
int monthOf(std::int64_t moment) {
  const std::string text(timeForm(static_cast<std::uint64_t>(moment)));
  return std::stoi(text.substr(0, 4)) * kMonths + std::stoi(text.substr(5, 2)) - 1;
}

std::string nameOf(int month) {
  const std::string ofYear = std::to_string(month % kMonths + 1);
  return std::to_string(month / kMonths) + (ofYear.size() == 1 ? "-0" : "-") + ofYear;
}

std::int64_t beginOf(int month) { return momentOf(nameOf(month) + "-01T00:00:00Z").value_or(0); }

int firstToldMonth(std::int64_t nowMs) { return monthOf(nowMs) - static_cast<int>(kToldMonths) + 1; }

/// Whether an alarm tells of redundancy that was not there.
bool exposes(const Alarm& alarm, const MachineView& machine) {
  const VolumeView* const volume = machine.volume(alarm.cause.object.id);
  if (volume != nullptr) return volume->level != kRaid0;
  return alarm.cause.kind == causeRow(CauseKind::kVolumeDegraded).id;
}

}  // namespace

std::vector<TimeSpan> united(std::vector<TimeSpan> spans) {
  std::sort(spans.begin(), spans.end(),
            [](const TimeSpan& one, const TimeSpan& other) { return one.fromMs < other.fromMs; });
  std::vector<TimeSpan> all;
  for (const TimeSpan& span : spans) {
    if (span.toMs <= span.fromMs) continue;
    if (all.empty() || all.back().toMs < span.fromMs) {
      all.push_back(span);
    } else {
      all.back().toMs = std::max(all.back().toMs, span.toMs);
    }
  }
  return all;
}

std::int64_t timeWithin(const std::vector<TimeSpan>& spans, const TimeSpan& bounds) {
  std::int64_t sum = 0;
  for (const TimeSpan& span : spans) {
    sum += std::max<std::int64_t>(0, std::min(span.toMs, bounds.toMs) - std::max(span.fromMs, bounds.fromMs));
  }
  return sum;
}

ExposureOfVolumes exposureOf(const MachineView& machine, const MachinePast& past, std::int64_t nowMs) {
  ExposureOfVolumes all;
  for (const Alarm& alarm : past.alarms) {
    if (!exposes(alarm, machine)) continue;
    const std::int64_t from = std::max(alarm.sinceMs, past.alarmsFromMs);
    all[alarm.cause.object.id].push_back({from, std::min(alarm.clearedMs.value_or(nowMs), nowMs)});
  }
  for (auto& [volume, spans] : all) spans = united(std::move(spans));
  return all;
}

std::vector<ExposedMonth> exposedMonths(const ExposureOfVolumes& exposure,
                                        const std::optional<MachinePast>& past, std::int64_t nowMs) {
  std::vector<TimeSpan> spans;
  for (const auto& [volume, each] : exposure) spans.insert(spans.end(), each.begin(), each.end());
  spans = united(std::move(spans));
  std::vector<ExposedMonth> months;
  for (int month = firstToldMonth(nowMs); months.size() < kToldMonths; ++month) {
    const TimeSpan bounds{beginOf(month), beginOf(month + 1)};
    ExposedMonth told{nameOf(month), {}};
    if (past && past->alarmsFromMs < bounds.toMs) told.exposedMs = timeWithin(spans, bounds);
    months.push_back(std::move(told));
  }
  return months;
}

std::int64_t beginOfToldMonths(std::int64_t nowMs) { return beginOf(firstToldMonth(nowMs)); }

}  // namespace insight
