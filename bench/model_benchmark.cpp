#include <benchmark/benchmark.h>

#include <cstdint>
#include <vector>

#include "scripted_library/large_machine.h"
#include "side_by_side.h"
#include "snapshot_of.h"

namespace {

using ovra::data_transfer::ServiceObject;

template <class Model>
ServiceObject formsOf(const std::vector<Model>& models) {
  ServiceObject list = ServiceObject::array();
  for (std::size_t i = 0; i < models.size(); ++i) list.at(i) = models[i].toServiceObject();
  return list;
}

/// Floor: to copy the finished forms.
template <class Model>
void publish(benchmark::State& state, const std::vector<Model>& models) {
  const ServiceObject forms = formsOf(models);
  runBesideFloor(
      state, [&] { benchmark::DoNotOptimize(formsOf(models)); },
      [&] { benchmark::DoNotOptimize(ServiceObject(forms)); });
}

void publishVolumes(benchmark::State& state) {
  publish(state, snapshotOf(large_machine::makeWithVolumes(24)).volumes);
}
void publishDevices(benchmark::State& state) {
  publish(state, snapshotOf(large_machine::make(1000)).endDevices);
}

/// Two pictures that are the same: what a quiet machine costs at each refresh. Floor: to compare the
/// ids alone.
void compareDevices(benchmark::State& state) {
  const std::vector<EndDevice> before = snapshotOf(large_machine::make(10000)).endDevices;
  const std::vector<EndDevice> now = snapshotOf(large_machine::make(10000)).endDevices;
  const auto allSame = [&](const auto& same) {
    bool isSame = true;
    for (std::size_t i = 0; i < before.size(); ++i) isSame = same(before[i], now[i]) && isSame;
    benchmark::DoNotOptimize(isSame);
  };
  runBesideFloor(
      state, [&] { allSame([](const auto& one, const auto& other) { return sameForm(one, other); }); },
      [&] { allSame([](const auto& one, const auto& other) { return one.id() == other.id(); }); });
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * before.size()));
}

BENCHMARK(publishVolumes)->UseManualTime();
BENCHMARK(publishDevices)->UseManualTime();
BENCHMARK(compareDevices)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
