#include "library_calls.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "mirn_session.h"
#include "scripted_library/scripted_library.h"

namespace {

using Handles = std::vector<VEX_HANDLE>;

template <class Record>
using ReadRecord = VEX_STATUS (*)(VEX_HANDLE session, VEX_HANDLE handle, Record* record);

using ListHandles = VEX_STATUS (*)(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                   VEX_HANDLE* handles, std::uint32_t* count);

/// One library session. Keeps no record, and a single buffer a list.
class LibraryCalls {
 public:
  LibraryCalls() { VexSessionOpen(&m_session); }
  LibraryCalls(const LibraryCalls&) = delete;
  LibraryCalls& operator=(const LibraryCalls&) = delete;
  ~LibraryCalls() { VexSessionClose(m_session); }

  void readAll() {
    readRaids();
    readControllers();
    read(VexGetArrayHandles, VexGetArrayInfo);
    read(VexGetEndDeviceHandles, VexGetEndDeviceInfo);
    read(VexGetPhyHandles, VexGetPhyInfo);
    read(VexGetPortHandles, VexGetPortInfo);
    read(VexGetVolumeHandles, VexGetVolumeInfo);
    VEX_SYSTEM_INFO system{};
    VexGetSystemInfo(&system);
    for (const VEX_HANDLE controller : m_controllers) {
      read(VexGetArrayHandles, VexGetArrayInfo, VEX_SCOPE_CONTROLLER, controller);
    }
    for (const VEX_HANDLE controller : m_controllers) {
      read(VexGetPortHandles, VexGetPortInfo, VEX_SCOPE_CONTROLLER_PORTS, controller);
    }
    for (const VEX_HANDLE controller : m_controllers) {
      read(VexGetVolumeHandles, VexGetVolumeInfo, VEX_SCOPE_CONTROLLER, controller);
    }
    readRaidLevels();
  }

 private:
  template <class Record>
  void read(ListHandles list, ReadRecord<Record> readRecord, VEX_SCOPE_TYPE scope = VEX_SCOPE_SYSTEM,
            VEX_HANDLE scopeHandle = 0) {
    std::uint32_t count = 0;
    list(m_session, scope, scopeHandle, nullptr, &count);
    m_handles.resize(count);
    list(m_session, scope, scopeHandle, m_handles.empty() ? nullptr : m_handles.data(), &count);
    readEach(m_handles, readRecord);
  }

  template <class Record>
  void readEach(const Handles& handles, ReadRecord<Record> readRecord) {
    for (const VEX_HANDLE handle : handles) {
      Record record{};
      readRecord(m_session, handle, &record);
      benchmark::DoNotOptimize(record);
    }
  }

  void readRaids() {
    std::uint32_t count = 0;
    VexGetRaidInfoHandles(m_session, nullptr, &count);
    m_raids.resize(count);
    VexGetRaidInfoHandles(m_session, m_raids.empty() ? nullptr : m_raids.data(), &count);
    readEach(m_raids, VexGetRaidInfo);
  }

  /// With the devices of each, and all RAID engines again for each.
  void readControllers() {
    read(VexGetControllerHandles, VexGetControllerInfo);
    m_controllers = m_handles;
    for (const VEX_HANDLE controller : m_controllers) {
      read(VexGetEndDeviceHandles, VexGetEndDeviceInfo, VEX_SCOPE_CONTROLLER, controller);
      readRaids();
    }
  }

  void readRaidLevels() {
    for (const VEX_HANDLE raid : m_raids) {
      for (const std::uint32_t level :
           {VEX_RAID_LEVEL_NONE, VEX_RAID_LEVEL_0, VEX_RAID_LEVEL_1, VEX_RAID_LEVEL_5, VEX_RAID_LEVEL_10}) {
        VEX_RAID_LEVEL_INFO record{};
        VexGetRaidLevelInfo(m_session, raid, level, &record);
        benchmark::DoNotOptimize(record);
      }
    }
  }

  VEX_HANDLE m_session = 0;
  Handles m_handles;
  Handles m_controllers;
  Handles m_raids;
};

using Calls = std::vector<std::string>;

/// The texts of the calls that `work` makes.
template <class Work>
Calls callsOf(const Work& work) {
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  work();
  return library.callTexts();
}

}  // namespace

void callLibraryAsASnapshotDoes() { LibraryCalls().readAll(); }

void checkLibraryCalls() {
  MirnSession session;
  const Calls floor = callsOf(callLibraryAsASnapshotDoes);
  const Calls snapshot = callsOf([&] { session.takeSnapshot(); });
  const auto [ours, theirs] = std::mismatch(floor.begin(), floor.end(), snapshot.begin(), snapshot.end());
  if (ours == floor.end() && theirs == snapshot.end()) return;
  const std::string end = "nothing further";
  std::cerr << "A snapshot calls " << (theirs == snapshot.end() ? end : *theirs) << ", and its floor "
            << (ours == floor.end() ? end : *ours) << ": correct " << __FILE__ << '\n';
  std::exit(EXIT_FAILURE);
}
