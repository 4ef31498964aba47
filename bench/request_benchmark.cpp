#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>

#include "library_calls.h"
#include "mirn_session.h"
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

/// Gives a volume two names in turn, in the library as well.
class Renaming {
 public:
  explicit Renaming(RunningPlugin& running) : m_running(running) {
    const Volume volume = MirnSession().takeSnapshot().volumes.front();
    m_id = volume.id();
    m_handle = volume.handle();
    running.library.effect(
        onEveryCall("VexVolumeRename"), [](ScriptedMachine& machine, const ScriptedCall& call) {
          setText(machine.volumes.at(static_cast<VEX_HANDLE>(call.arguments[0].number)).name,
                  call.arguments[1].bytes);
        });
  }

  void rename() {
    ServiceObject body;
    body.member(L"name") = m_isFirst ? std::wstring(L"Second name") : std::wstring(L"First name");
    m_isFirst = !m_isFirst;
    const ServiceObject answer = m_running.put(L"mirn/volumes", {m_id, L"name"}, body);
    if (answer.isObject()) return;
    std::cerr << "The volume was not renamed.\n";
    std::exit(EXIT_FAILURE);
  }

  void callLibrary() const {
    VexVolumeRename(m_handle, "Another name");
    callLibraryAsASnapshotDoes();
  }

 private:
  RunningPlugin& m_running;
  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  bool m_isFirst = false;
};

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
