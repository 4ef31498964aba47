#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>

#include "mirn_session.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"

namespace {

using ovra::data_transfer::ServiceObject;
using Values = std::vector<ServiceObject>;

constexpr std::size_t kDevices = 10000;
constexpr std::size_t kCandidates = 100;  // a page of them

/// A machine of many devices, whose first volume is degraded.
class Rehearsing {
 public:
  Rehearsing() : m_running(machine()), m_snapshot(MirnSession().takeSnapshot()) {}

  ServiceObject rebuild() {
    return m_running.plugin.rehearse(L"mirn/volumes", HttpMethod::kPut, {volumeId(), L"rebuild"}, {},
                                     rebuildBody());
  }

  /// The volume is to be rebuilt onto each of the last disks.
  ServiceObject rebuildOntoEach() {
    return m_running.plugin.rehearseEach(L"mirn/volumes", HttpMethod::kPut, {volumeId(), L"rebuild"}, {}, {},
                                         L"diskId", lastIds(m_snapshot.endDevices));
  }

  /// Looks for the members of the array among all devices.
  ServiceObject createInEach() {
    ServiceObject body;
    body.member(L"source") = std::wstring(L"ARRAY");
    body.member(L"name") = std::wstring(L"New volume");
    body.member(L"raidLevel") = std::wstring(L"RAID_5");
    body.member(L"size") = std::wstring(L"0");
    return m_running.plugin.rehearseEach(L"mirn/volumes", HttpMethod::kPost, {}, {}, body, L"arrayId",
                                         lastIds(m_snapshot.arrays));
  }

  /// Looks for the controller of each volume.
  ServiceObject setCachePolicyOfEach() {
    ServiceObject body;
    body.member(L"cachePolicy") = std::wstring(L"OFF");
    return m_running.plugin.rehearseEach(L"mirn/volumes", HttpMethod::kPut, {L"{volumeId}", L"cachepolicy"},
                                         {}, body, L"{volumeId}", lastIds(m_snapshot.volumes));
  }

 private:
  static ScriptedMachine machine() {
    ScriptedMachine machine = large_machine::make(kDevices);
    const VEX_HANDLE first = machine.volumes.records().front().volumeHandle;
    machine.volumes.at(first).state = VEX_VOLUME_STATE_DEGRADED;
    return machine;
  }

  std::wstring volumeId() const { return m_snapshot.volumes.front().id(); }

  ServiceObject rebuildBody() const {
    ServiceObject body;
    body.member(L"diskId") = m_snapshot.endDevices.back().id();
    return body;
  }

  template <class Object>
  static Values lastIds(const std::vector<Object>& objects) {
    Values ids;
    for (std::size_t i = objects.size() - kCandidates; i < objects.size(); ++i)
      ids.emplace_back(objects[i].id());
    return ids;
  }

  RunningPlugin m_running;
  MirnSnapshot m_snapshot;
};

void requireList(const ServiceObject& answers) {
  if (answers.isArray() && answers.begin() != answers.end()) return;
  std::cerr << "Nothing was rehearsed.\n";
  std::exit(EXIT_FAILURE);
}

void rehearseOne(benchmark::State& state) {
  Rehearsing rehearsing;
  for (auto _ : state) benchmark::DoNotOptimize(rehearsing.rebuild());
}

template <ServiceObject (Rehearsing::*rehearse)()>
void rehearseHundred(benchmark::State& state) {
  Rehearsing rehearsing;
  requireList((rehearsing.*rehearse)());
  for (auto _ : state) benchmark::DoNotOptimize((rehearsing.*rehearse)());
}

BENCHMARK(rehearseOne)->Unit(benchmark::kMicrosecond);
BENCHMARK(rehearseHundred<&Rehearsing::rebuildOntoEach>)->Unit(benchmark::kMillisecond);
BENCHMARK(rehearseHundred<&Rehearsing::createInEach>)->Unit(benchmark::kMillisecond);
BENCHMARK(rehearseHundred<&Rehearsing::setCachePolicyOfEach>)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
