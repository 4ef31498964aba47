#include <benchmark/benchmark.h>

#include "library_calls.h"
#include "mirn_session.h"
#include "scripted_library/large_machine.h"
#include "scripted_library/scripted_library.h"
#include "side_by_side.h"

namespace {

/// Runs `subject(session)` on a machine of as many disks as the benchmark's argument says. Floor: the same
/// library calls alone.
template <class Subject>
void measure(benchmark::State& state, const Subject& subject) {
  const auto devices = static_cast<std::size_t>(state.range(0));
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  library.recordCalls(false);
  library.setMachine(large_machine::make(devices));
  MirnSession session;
  session.refresh(false);
  runBesideFloor(
      state, [&] { subject(session); }, callLibraryAsASnapshotDoes);
  state.counters["own/device"] = benchmark::Counter(
      state.counters["own"].value / static_cast<double>(devices), benchmark::Counter::kAvgIterations);
}

/// A whole picture, taken and dropped.
void takeSnapshot(benchmark::State& state) {
  measure(state, [](MirnSession& session) { benchmark::DoNotOptimize(session.takeSnapshot()); });
}

/// What the event thread does each time: a picture is taken, exchanged, and compared with the one before.
void refresh(benchmark::State& state) {
  measure(state, [](MirnSession& session) { session.refresh(false); });
}

BENCHMARK(takeSnapshot)->UseManualTime()->RangeMultiplier(10)->Range(10, 10000);
BENCHMARK(refresh)->UseManualTime()->RangeMultiplier(10)->Range(10, 10000);

}  // namespace

int main(int argc, char** argv) {
  checkLibraryCalls();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
