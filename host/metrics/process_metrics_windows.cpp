#include <windows.h>
// After the header that it needs.
#include <psapi.h>

#include "metrics/process_metrics.h"

namespace host {

namespace {

/// From 1601, where the system's times begin, to 1970.
constexpr double kSecondsTo1970 = 11644473600.0;
constexpr double kTicksPerSecond = 1e7;

double secondsOf(const FILETIME& time) {
  ULARGE_INTEGER ticks{};
  ticks.LowPart = time.dwLowDateTime;
  ticks.HighPart = time.dwHighDateTime;
  return static_cast<double>(ticks.QuadPart) / kTicksPerSecond;
}

}  // namespace

ProcessLoad processLoad() {
  ProcessLoad load;
  const HANDLE self = ::GetCurrentProcess();
  FILETIME start{};
  FILETIME end{};
  FILETIME kernel{};
  FILETIME user{};
  if (::GetProcessTimes(self, &start, &end, &kernel, &user) != 0) {
    load.processorSeconds = secondsOf(kernel) + secondsOf(user);
    load.startedAt = secondsOf(start) - kSecondsTo1970;
  }
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof(memory);
  if (::K32GetProcessMemoryInfo(self, &memory, sizeof(memory)) != 0) {
    load.residentBytes = memory.WorkingSetSize;
    load.virtualBytes = memory.PagefileUsage;
  }
  DWORD handles = 0;
  // Every process has some: none are what a system says that does not count them.
  if (::GetProcessHandleCount(self, &handles) != 0 && handles != 0) load.descriptors = handles;
  return load;
}

}  // namespace host
