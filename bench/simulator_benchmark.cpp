// What the simulated library costs by itself, with its files: on a machine of 10 to 10,000 devices.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "core/library.h"
#include "engine/work.h"
#include "rules/rules.h"
#include "scenario/generator.h"
#include "scenario/scenario.h"

namespace {

namespace fs = std::filesystem;

using simulator::Handle;
using simulator::Library;
using simulator::Machine;

/// The library on a generated machine in a folder of its own, at a clock speed.
class KeptMachine {
 public:
  KeptMachine(std::int64_t devices, std::uint32_t speed)
      : m_folder(fs::temp_directory_path() / ("mirn-bench-" + std::to_string(std::rand()))) {
    fs::create_directory(m_folder);
    const Machine machine = simulator::generateMachine(static_cast<std::uint32_t>(devices));
    std::ofstream(m_folder / "state.json") << simulator::writeScenario(machine);
    setenv("VEXL2_STATE", (m_folder / "state.json").c_str(), 1);
    start();
    m_library->setClockSpeed(speed);
    m_volume = machine.volumes.begin()->first;
  }
  KeptMachine(const KeptMachine&) = delete;
  KeptMachine& operator=(const KeptMachine&) = delete;
  ~KeptMachine() {
    m_library.reset();
    fs::remove_all(m_folder);
  }

  void start() {
    m_library.reset();
    m_library = std::make_unique<Library>();
    if (m_library->initialize("VexInitialize") != 0) throw std::runtime_error("the library does not start");
  }

  void rename(const std::string& name) {
    const auto status = m_library->change(
        "VexVolumeRename", [&](Machine& machine) { simulator::renameVolume(machine, m_volume, name); });
    if (status != 0) throw std::runtime_error("a volume is not renamed");
  }

  /// All volumes that can are verified.
  void setToWork() {
    m_library->control([](Machine& machine) {
      for (auto& entry : machine.volumes) {
        if (!entry.second.work) simulator::startVerify(machine, entry.second, false);
      }
    });
  }

  void read() {
    m_library->read("VexGetVolumeInfo", this, [&](const Machine& machine) {
      benchmark::DoNotOptimize(simulator::progressOf(machine, machine.volumes.at(m_volume)));
    });
  }

 private:
  fs::path m_folder;
  std::unique_ptr<Library> m_library;
  Handle m_volume = 0;
};

constexpr std::int64_t kAtRest = 0;
constexpr std::int64_t kAtWork = 1;

/// Rename one volume, which is synchronised to the disk; at a clock speed, with all volumes at rest or
/// at work.
void rename(benchmark::State& state) {
  KeptMachine machine(state.range(0), static_cast<std::uint32_t>(state.range(1)));
  if (state.range(2) == kAtWork) machine.setToWork();
  int turn = 0;
  for (auto step : state) machine.rename("turn " + std::to_string(++turn));
}

/// Read one volume while all are at work.
void read(benchmark::State& state) {
  KeptMachine machine(state.range(0), 60);
  machine.setToWork();
  for (auto step : state) machine.read();
}

/// Start on the state file, and die.
void start(benchmark::State& state) {
  const auto before = static_cast<double>(mallinfo2().uordblks);
  KeptMachine machine(state.range(0), 1);
  for (auto step : state) machine.start();
  const auto used = static_cast<double>(mallinfo2().uordblks);
  state.counters["heapMiB"] = (used - before) / 1048576;
}

BENCHMARK(rename)
    ->ArgNames({"devices", "speed", "atWork"})
    ->ArgsProduct({{10, 100, 1000, 10000}, {1, 60}, {kAtRest, kAtWork}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(read)->ArgName("devices")->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(start)->ArgName("devices")->Arg(10)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
