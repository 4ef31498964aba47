#include <benchmark/benchmark.h>

#include <boost/chrono/system_clocks.hpp>
#include <ctime>

#include "answers/json_writer.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"
#include "served_plugin.h"
#include "side_by_side.h"

namespace {

constexpr std::size_t kVolumes = 24;
/// A plug-in, a server around it, and a client.
struct ServedMachine {
  RunningPlugin running{large_machine::makeWithVolumes(kVolumes)};
  ServedPlugin served{running};
  ServedPlugin::Client client{served};
};

/// Processor time of all threads.
struct ProcessClock {
  using Seconds = boost::chrono::duration<double>;
  static Seconds now() { return Seconds(static_cast<double>(std::clock()) / CLOCKS_PER_SEC); }
};

/// Floor: the same request, asked of the plug-in.
template <class Clock>
void getVolumes(benchmark::State& state) {
  ServedMachine machine;
  runBesideFloor<Clock>(
      state, [&] { machine.client.getVolumes(); },
      [&] { benchmark::DoNotOptimize(machine.running.get(L"mirn/volumes")); });
}

/// Floor: as above; what is added is the writing of the answer alone.
void getVolumesAndWriteJson(benchmark::State& state) {
  RunningPlugin running(large_machine::makeWithVolumes(kVolumes));
  runBesideFloor(
      state, [&] { benchmark::DoNotOptimize(host::writeJson(running.get(L"mirn/volumes"))); },
      [&] { benchmark::DoNotOptimize(running.get(L"mirn/volumes")); });
}

BENCHMARK_TEMPLATE(getVolumes, boost::chrono::steady_clock)->UseManualTime();
BENCHMARK_TEMPLATE(getVolumes, ProcessClock)->UseManualTime();
BENCHMARK(getVolumesAndWriteJson)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
