#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_ARGUMENT_DESCRIPTION_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_ARGUMENT_DESCRIPTION_H

#include <cstddef>
#include <cstdint>
#include <vector>

#include "scripted_library/scripted_call.h"
#include "VEXL2.h"

/// How each kind of argument is recorded.

/// Handles in the caller's memory.
struct HandleList {
  const VEX_HANDLE* handles;
  std::uint32_t count;
};

/// Memory that the library fills.
struct Out {
  const void* memory;
  std::size_t size;  // of a record; 0 for what the library does not look at before it stores
};

/// A record that the library fills: recorded with what the caller had put there.
template <class Record>
Out outRecord(const Record* record) {
  return {record, sizeof *record};
}

/// The size of a handle buffer, as the caller gave it.
struct Count {
  const std::uint32_t* value;
};

ScriptedArgument describe(std::uint64_t number);
ScriptedArgument describe(const char* text);
ScriptedArgument describe(Out out);
ScriptedArgument describe(Count count);
ScriptedArgument describe(HandleList list);
ScriptedArgument describe(const VEX_CREATE_VOLUME_PARAMS& params);
ScriptedArgument describe(VEX_CREATE_FROM_DISKS_PARAMS params);
ScriptedArgument describe(VEX_RAID_LEVEL_MODIFY_PARAMS params);
ScriptedArgument describe(const VEX_UNLOCK_PARAMS* params);

template <class... Arguments>
std::vector<ScriptedArgument> describeAll(const Arguments&... arguments) {
  return {describe(arguments)...};
}

#endif
