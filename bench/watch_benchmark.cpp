#include <benchmark/benchmark.h>

#include "event_comparison.h"
#include "event_journal.h"
#include "library_calls.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"
#include "side_by_side.h"
#include "snapshot_comparison.h"

namespace {

std::size_t devicesOf(const benchmark::State& state) { return static_cast<std::size_t>(state.range(0)); }

void position(benchmark::State& state) {
  RunningPlugin running(large_machine::make(10));
  for (auto _ : state) benchmark::DoNotOptimize(running.plugin.position());
}

/// A refresh of a machine on which nothing changes, which is the dearest case: everything is looked at.
/// Floor: the same without a look at what clients see.
void refreshWithRevision(benchmark::State& state) {
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  library.setMachine(large_machine::make(devicesOf(state)));
  MirnSession session;
  session.refresh(false);
  MirnSnapshot held = session.takeSnapshot();
  EventJournal journal;
  const auto refreshWithout = [&] {
    MirnSnapshot now = session.takeSnapshot();
    std::swap(held, now);
    compareVolumes(now.volumes, held.volumes, journal);
    compareEndDevices(now.endDevices, held.endDevices, journal);
  };
  runBesideFloor(
      state, [&] { session.refresh(false); }, refreshWithout);
}

/// Two pictures that agree.
void compareForRevision(benchmark::State& state) {
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  library.setMachine(large_machine::make(devicesOf(state)));
  MirnSession session;
  const MirnSnapshot before = session.takeSnapshot();
  const MirnSnapshot after = session.takeSnapshot();
  for (auto _ : state) benchmark::DoNotOptimize(differenceBetween(before, after));
}

void wholePicture(benchmark::State& state) {
  RunningPlugin running(large_machine::make(devicesOf(state)));
  for (auto _ : state) benchmark::DoNotOptimize(running.plugin.picture());
}

BENCHMARK(position);
BENCHMARK(refreshWithRevision)->UseManualTime()->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(compareForRevision)->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(wholePicture)->RangeMultiplier(10)->Range(10, 10000);

}  // namespace

BENCHMARK_MAIN();
