#include <windows.h>

#include <winternl.h>

#include <cstdint>
#include <stdexcept>
#include <vector>

#include "support/process_resources.h"

namespace {

constexpr auto kListTooLong = static_cast<NTSTATUS>(0xC0000004);

void require(bool condition, const char* what) {
  if (!condition) throw std::runtime_error(what);
}

/// The system's list of all processes.
std::vector<char> processList() {
  std::vector<char> list(1 << 16);
  NTSTATUS status = kListTooLong;
  while (status == kListTooLong) {
    list.resize(2 * list.size());
    status = ::NtQuerySystemInformation(SystemProcessInformation, list.data(),
                                        static_cast<ULONG>(list.size()), nullptr);
  }
  require(status == 0, "no list of processes");
  return list;
}

/// What that list says of this one: with its threads and handles.
SYSTEM_PROCESS_INFORMATION thisProcess() {
  const std::vector<char> list = processList();
  for (std::size_t place = 0;;) {
    const auto& process = reinterpret_cast<const SYSTEM_PROCESS_INFORMATION&>(list[place]);
    if (reinterpret_cast<std::uintptr_t>(process.UniqueProcessId) == ::GetCurrentProcessId()) return process;
    require(process.NextEntryOffset != 0, "this process is not in the list");
    place += process.NextEntryOffset;
  }
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

ProcessResources processResources() {
  const SYSTEM_PROCESS_INFORMATION process = thisProcess();
  return {process.NumberOfThreads, process.HandleCount, bytes()};
}

/// The one beside those that every program has. It brings the C runtime with it, of which Wine's keeps a list
/// of the program's arguments each time it goes.
void keepSystemLibraries() { require(::LoadLibraryW(L"advapi32.dll") != nullptr, "no advapi32.dll"); }
