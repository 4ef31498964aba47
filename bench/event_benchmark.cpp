#include <benchmark/benchmark.h>

#include <memory>

#include "event_comparison.h"
#include "event_journal.h"
#include "scripted_library/large_machine.h"
#include "snapshot_of.h"

namespace {

constexpr std::size_t kJournalBound = 1000;
constexpr std::uint64_t kAnyAge = 1000000;

void compare(const MirnSnapshot& before, const MirnSnapshot& now, EventJournal& journal) {
  compareVolumes(before.volumes, now.volumes, journal);
  compareEndDevices(before.endDevices, now.endDevices, journal);
}

/// `change` is done to the machine between the two pictures.
template <class Change>
void measureComparison(benchmark::State& state, const Change& change) {
  const auto devices = static_cast<std::size_t>(state.range(0));
  ScriptedMachine machine = large_machine::make(devices);
  const MirnSnapshot before = snapshotOf(machine);
  change(machine);
  const MirnSnapshot now = snapshotOf(machine);
  EventJournal journal;
  for (auto _ : state) compare(before, now, journal);
  state.counters["s/device"] =
      benchmark::Counter(static_cast<double>(devices),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void comparePicturesThatAgree(benchmark::State& state) {
  measureComparison(state, [](ScriptedMachine&) {});
}

/// Every device has got another state, and an event.
void comparePicturesThatDiffer(benchmark::State& state) {
  measureComparison(state, [](ScriptedMachine& machine) {
    const std::vector<VEX_END_DEVICE_INFO> disks = machine.endDevices.records();
    for (const VEX_END_DEVICE_INFO& disk : disks) {
      machine.endDevices.at(disk.endDeviceHandle).diskState = VEX_DISK_STATE_FAILED;
    }
  });
}

std::shared_ptr<mirn_events::base_event> eventOf(const Volume& volume) {
  return std::make_shared<mirn_events::volume_event>(EventSeverity::WARNING, VolumeEventType::VOLUME_DEGRADED,
                                                     volume);
}

/// With a full journal: each event drops the oldest.
void addToJournal(benchmark::State& state) {
  const Volume volume = snapshotOf(large_machine::makeWithVolumes(2)).volumes.front();
  EventJournal journal;
  for (std::size_t i = 0; i < kJournalBound; ++i) journal.add(eventOf(volume));
  for (auto _ : state) journal.add(eventOf(volume));
}

/// All events of a full journal.
void getRecentEvents(benchmark::State& state) {
  const Volume volume = snapshotOf(large_machine::makeWithVolumes(2)).volumes.front();
  EventJournal journal;
  for (std::size_t i = 0; i < kJournalBound; ++i) journal.add(eventOf(volume));
  std::size_t events = 0;
  for (auto _ : state) events = journal.getRecent(kAnyAge).size();
  state.counters["events"] = static_cast<double>(events);
}

BENCHMARK(comparePicturesThatAgree)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(comparePicturesThatDiffer)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(addToJournal);
BENCHMARK(getRecentEvents);

}  // namespace

BENCHMARK_MAIN();
