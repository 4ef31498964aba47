#include <windows.h>

#include <tlhelp32.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "support/process_resources.h"

namespace {

void require(bool condition, const char* what) {
  if (!condition) throw std::runtime_error(what);
}

/// The system lists the threads of all processes.
std::size_t threads() {
  const HANDLE snapshot = ::CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  require(snapshot != INVALID_HANDLE_VALUE, "no list of threads");
  std::size_t count = 0;
  THREADENTRY32 thread = {};
  thread.dwSize = sizeof thread;
  for (BOOL found = ::Thread32First(snapshot, &thread); found; found = ::Thread32Next(snapshot, &thread)) {
    if (thread.th32OwnerProcessID == ::GetCurrentProcessId()) ++count;
  }
  ::CloseHandle(snapshot);
  return count;
}

/// Handles are multiples of four, the lowest that is free each time. Each is asked for: what the system
/// counts itself is, with Wine, the room that it keeps for them.
std::size_t handles() {
  constexpr std::uintptr_t kRange = 1 << 16;
  std::size_t count = 0;
  for (std::uintptr_t value = 4; value < kRange; value += 4) {
    DWORD flags = 0;
    if (::GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags)) ++count;
  }
  require(count > 0, "no handles");
  return count;
}

std::size_t bytesOf(HANDLE heap) {
  require(::HeapLock(heap), "no lock of a heap");
  std::size_t bytes = 0;
  PROCESS_HEAP_ENTRY entry = {};
  while (::HeapWalk(heap, &entry)) {
    if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
  }
  const bool whole = ::GetLastError() == ERROR_NO_MORE_ITEMS;
  ::HeapUnlock(heap);
  require(whole, "no walk through a heap");
  return bytes;
}

/// Every library may have a heap of its own.
std::size_t bytes() {
  std::vector<HANDLE> heaps(256);
  const DWORD count = ::GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  require(count > 0 && count <= heaps.size(), "no list of heaps");
  heaps.resize(count);
  std::size_t sum = 0;
  for (const HANDLE heap : heaps) sum += bytesOf(heap);
  return sum;
}

}  // namespace

ProcessResources processResources() { return {threads(), handles(), bytes()}; }

/// A lock of the thread library and of Wine takes its one handle when two threads first meet in it.
const std::size_t kLateHandles = 8;

/// The one beside those that every program has. It brings the C runtime with it, of which Wine's keeps a list
/// of the program's arguments each time it goes.
void keepSystemLibraries() { require(::LoadLibraryW(L"advapi32.dll") != nullptr, "no advapi32.dll"); }
