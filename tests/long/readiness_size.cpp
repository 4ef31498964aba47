// What it costs to tell how ready a machine of 10,000 disks is, with as long a past as is looked at. Prints
// a line each. Takes an empty folder.
#include <boost/json/serialize.hpp>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>

#include "history/history.h"
#include "insight/history/sample_entries.h"
#include "insight/readiness/made_past.h"
#include "readiness/readiness_form.h"

namespace {

constexpr std::size_t kDisksOfAnArray = 8;
constexpr std::size_t kArrays = 1250;
constexpr int kTimes = 5;

/// Of the processor, since others work, too.
double millisecondsOf(const std::function<void()>& run) {
  const std::clock_t begin = std::clock();
  for (int i = 0; i < kTimes; ++i) run();
  return 1000.0 * static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC / kTimes;
}

/// No spare fits anywhere, and every other disk has another firmware.
insight::MachineView largeMachine() {
  const insight::MachineView small = insight::smallMachine();
  insight::MachineView machine = small;
  machine.arrays.clear();
  machine.volumes.clear();
  machine.disks.clear();
  for (std::size_t array = 0; array < kArrays; ++array) {
    const std::wstring number = std::to_wstring(array);
    machine.arrays.push_back({L"A" + number, L"Array_" + number, {L"C"}});
    insight::VolumeView volume = small.volumes.front();
    volume.id = L"V" + number;
    volume.name = L"Data_" + number;
    volume.arrayId = L"A" + number;
    volume.totalBytes = (array + 1) << 30U;
    machine.volumes.push_back(volume);
    for (std::size_t place = 0; place < kDisksOfAnArray; ++place) {
      insight::DiskView disk = small.disks.front();
      disk.id = L"D" + number + L"-" + std::to_wstring(place);
      disk.arrayId = L"A" + number;
      disk.model = L"Model";
      disk.firmware = place % 2 == 0 ? L"1.0" : L"1.1";
      machine.ports.push_back({L"P" + disk.id, disk.id, {}});
      machine.disks.push_back(disk);
    }
  }
  machine.index();
  return machine;
}

/// As many rebuilds and alarms as are looked at, of all volumes in turn.
void fill(insight::History& history) {
  insight::HistoryBatch batch = insight::sampleEvents(1, 1);
  for (std::size_t i = 0; i < insight::kLookedAt; ++i) {
    const std::wstring volume = L"V" + std::to_wstring(i % kArrays);
    const auto agoMs = static_cast<std::int64_t>(i + 1) * insight::kHourMs;
    insight::Job job = insight::endedJob("rebuild", agoMs);
    job.id = "job-" + std::to_string(i);
    job.object.id = volume;
    job.seenFromMs = *job.startMs;
    batch.jobs.push_back(recordOf(job));
    insight::Alarm alarm = insight::alarmOfVolume(
        "volume-degraded", insight::kAskedMs - agoMs - insight::kHourMs, insight::kAskedMs - agoMs);
    alarm.cause.object.id = volume;
    batch.alarms.push_back(recordOf(alarm));
  }
  if (!history.addAndWait(std::move(batch), std::chrono::minutes(1))) std::printf("nothing is kept\n");
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) {
    std::fprintf(stderr, "usage: mirn_readiness_size FOLDER\n");
    return 2;
  }
  insight::History::Settings settings;
  settings.path = std::filesystem::path(arguments[1]) / "history.db";
  settings.nowMs = [] { return insight::kAskedMs; };
  insight::History history(settings);
  fill(history);
  const insight::MachineView machine = largeMachine();
  insight::ReadinessFacts facts{machine, insight::kAskedMs};
  std::printf("the past             %7.1f ms\n",
              millisecondsOf([&] { facts.past = insight::pastOf(history, {}, insight::kAskedMs); }));
  insight::ReadinessReport report;
  std::printf("the report           %7.1f ms, %zu disks\n",
              millisecondsOf([&] { report = insight::readinessOf(facts); }), machine.disks.size());
  std::string text;
  std::printf("its form             %7.1f ms",
              millisecondsOf([&] { text = boost::json::serialize(insight::formOf(report)); }));
  std::printf(", %zu lines, %zu KiB\n", report.lines.size(), text.size() / 1024);
  return 0;
}
