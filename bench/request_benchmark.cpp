#include <benchmark/benchmark.h>

#include "library_calls.h"
#include "mirn_session.h"
#include "renaming.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"
#include "side_by_side.h"

namespace {

using ovra::data_transfer::ServiceObject;

constexpr std::size_t kVolumes = 24;

ServiceObject formsOf(const std::vector<Volume>& volumes) {
  ServiceObject list = ServiceObject::array();
  for (std::size_t i = 0; i < volumes.size(); ++i) list.at(i) = volumes[i].toServiceObject();
  return list;
}

/// Floor: to copy the list, and to build the tree of its forms and drop it.
void getVolumes(benchmark::State& state) {
  RunningPlugin running(large_machine::makeWithVolumes(kVolumes));
  const std::vector<Volume> volumes = MirnSession().takeSnapshot().volumes;
  const auto request = [&] { benchmark::DoNotOptimize(running.get(L"mirn/volumes")); };
  const auto copyAndBuild = [&] {
    std::vector<Volume> copy = volumes;
    benchmark::DoNotOptimize(copy);
    benchmark::DoNotOptimize(formsOf(copy));
  };
  runBesideFloor(state, request, copyAndBuild);
}

/// Floor: the library's time, for the change and for reading everything again.
void renameVolume(benchmark::State& state) {
  RunningPlugin running(large_machine::makeWithVolumes(kVolumes));
  Renaming renaming(running);
  runBesideFloor(
      state, [&] { renaming.rename(); }, [&] { renaming.callLibrary(); });
}

BENCHMARK(getVolumes)->UseManualTime();
BENCHMARK(renameVolume)->UseManualTime();

}  // namespace

int main(int argc, char** argv) {
  checkLibraryCalls();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
