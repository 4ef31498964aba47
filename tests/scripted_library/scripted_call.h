#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_CALL_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_CALL_H

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include "scripted_library/scripted_operations.h"
#include "VEXL2.h"

/// One argument of a call, copied: nothing here points into the caller's memory.
struct ScriptedArgument {
  /// As it stands in the call's text: `17`, `"Data"`, `[4, 5]`, `{00ff...}` for the bytes of a record,
  /// `{00ff...; [4, 5]}` for a record with handles behind its pointer, `null`, and `out` for what the library
  /// is to store.
  std::string text;
  std::uint64_t number = 0;  ///< Of a number or handle.
  std::string
      bytes;  ///< Of a text; of a record with its pointer zeroed; of a record to be filled, as it came.
  std::vector<VEX_HANDLE> handles;  ///< Of a list, or behind the pointer of a record.

  /// The record that was given.
  template <class Record>
  Record record() const {
    static_assert(std::is_trivially_copyable_v<Record>);
    if (bytes.size() != sizeof(Record)) throw std::logic_error("the argument is another record: " + text);
    Record result;
    std::memcpy(&result, bytes.data(), sizeof result);
    return result;
  }
};

/// One call of the library, as recorded.
struct ScriptedCall {
  std::string operation;
  OperationKind kind = OperationKind::READING;
  std::vector<ScriptedArgument> arguments;
  std::thread::id thread;

  /// Such as `VexVolumeRebuild(17, 4)`.
  std::string text() const;
};

using ScriptedCalls = std::vector<ScriptedCall>;

/// The text of each call, in order.
std::vector<std::string> textsOf(const ScriptedCalls& calls);

/// The calls of one kind, in order.
ScriptedCalls onlyOf(OperationKind kind, const ScriptedCalls& calls);

#endif
