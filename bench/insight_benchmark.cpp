#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "actions/candidates.h"
#include "actions/look.h"
#include "actions/operation.h"
#include "metrics/insight_metrics.h"
#include "metrics/machine_metrics.h"
#include "mirn_session.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"
#include "service/insight_service.h"
#include "side_by_side.h"
#include "view/machine_view_source.h"
#include "view/object_path.h"

namespace {

using insight::MachineView;

constexpr std::size_t kPage = 100;

std::int64_t millisecondsNow() {
  using std::chrono::milliseconds;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<milliseconds>(now).count();
}

/// A plug-in that insight watches, on a machine with as many devices, or volumes, as the benchmark's range.
class WatchedMachine {
 public:
  explicit WatchedMachine(ScriptedMachine machine)
      : running(std::move(machine)),
        operations(insight::operationsOf(running.plugin.describe())),
        views(running.plugin, [this] { return m_clock += std::chrono::hours(1); }),
        service(running.plugin, views, running.plugin.describe(), {{}, millisecondsNow}) {}

  const insight::Operation& operation(const std::wstring& id) const {
    return *std::find_if(operations.begin(), operations.end(),
                         [&](const auto& each) { return each.id == id; });
  }

  RunningPlugin running;
  const std::vector<insight::Operation> operations;
  insight::MachineViewSource views;
  insight::InsightService service;

 private:
  insight::MachineViewSource::Moment m_clock;  ///< No view is used twice.
};

/// A look of insight at a machine, whose view is made anew for each. Floor: the plug-in's own refresh.
void lookBesideRefresh(benchmark::State& state, ScriptedMachine machine) {
  WatchedMachine watched(std::move(machine));
  MirnSession session;
  session.refresh(false);
  runBesideFloor(
      state, [&] { watched.service.look(); }, [&] { session.refresh(false); });
}

void lookAtDevices(benchmark::State& state) {
  lookBesideRefresh(state, large_machine::make(static_cast<std::size_t>(state.range(0))));
}

void lookAtVolumes(benchmark::State& state) {
  lookBesideRefresh(state, large_machine::makeWithVolumes(static_cast<std::size_t>(state.range(0))));
}

/// What can be done with one volume.
void actions(benchmark::State& state) {
  WatchedMachine watched(large_machine::make(static_cast<std::size_t>(state.range(0))));
  const std::wstring id = watched.views.viewOfStructure()->volumes.front().id;
  for (auto _ : state) {
    const auto machine = watched.views.viewOfStructure();
    benchmark::DoNotOptimize(insight::objectNamed(*machine, L"volume", id));
    benchmark::DoNotOptimize(insight::actionsOn(L"volume", id, watched.operations, watched.running.plugin));
  }
}

/// A page of the disks onto which one volume may be rebuilt.
void candidates(benchmark::State& state) {
  WatchedMachine watched(large_machine::make(static_cast<std::size_t>(state.range(0))));
  const insight::Operation& rebuild = watched.operation(L"rebuildVolume");
  const std::wstring id = watched.views.viewOfStructure()->volumes.front().id;
  const insight::CandidateQuestion question{rebuild, *rebuild.field(L"diskId"), id, {}};
  for (auto _ : state) {
    const auto machine = watched.views.viewOfStructure();
    std::vector<insight::Candidate> page = insight::candidatesFor(question, *machine);
    page.resize(std::min(page.size(), kPage));
    insight::judge(page, question, watched.running.plugin);
    benchmark::DoNotOptimize(page);
  }
}

/// What a scrape takes of insight at a revision that was scraped before.
void scrapeAgain(benchmark::State& state, ScriptedMachine machine) {
  WatchedMachine watched(std::move(machine));
  watched.service.look();
  insight::InsightMetrics metrics(watched.service, watched.running.plugin.describe());
  std::size_t bytes = 0;
  for (auto _ : state) {
    MetricText text;
    metrics.write(text);
    bytes = text.text().size();
    benchmark::DoNotOptimize(text.text().data());
  }
  state.counters["bytes"] = static_cast<double>(bytes);
}

void scrapeDevicesAgain(benchmark::State& state) {
  scrapeAgain(state, large_machine::make(static_cast<std::size_t>(state.range(0))));
}

void scrapeVolumesAgain(benchmark::State& state) {
  scrapeAgain(state, large_machine::makeWithVolumes(static_cast<std::size_t>(state.range(0))));
}

/// The lines of a machine, as they are made once a revision.
void tellMachine(benchmark::State& state, ScriptedMachine machine) {
  WatchedMachine watched(std::move(machine));
  const insight::MachineWords words = insight::machineWordsOf(watched.running.plugin.describe());
  const auto view = watched.views.view();
  for (auto _ : state) {
    MetricText text;
    insight::writeMachine(text, *view, words);
    benchmark::DoNotOptimize(text.text().data());
  }
}

void tellDevices(benchmark::State& state) {
  tellMachine(state, large_machine::make(static_cast<std::size_t>(state.range(0))));
}

void tellVolumes(benchmark::State& state) {
  tellMachine(state, large_machine::makeWithVolumes(static_cast<std::size_t>(state.range(0))));
}

BENCHMARK(lookAtVolumes)->UseManualTime()->Arg(24);
BENCHMARK(lookAtDevices)->UseManualTime()->Arg(10000);
BENCHMARK(actions)->Arg(100)->Arg(10000);
BENCHMARK(candidates)->Arg(100)->Arg(10000);
BENCHMARK(scrapeVolumesAgain)->Unit(benchmark::kMillisecond)->Arg(24);
BENCHMARK(scrapeDevicesAgain)->Unit(benchmark::kMillisecond)->Arg(10000);
BENCHMARK(tellVolumes)->Unit(benchmark::kMillisecond)->Arg(24);
BENCHMARK(tellDevices)->Unit(benchmark::kMillisecond)->Arg(10000);

}  // namespace

BENCHMARK_MAIN();
