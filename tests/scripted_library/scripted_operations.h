#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_OPERATIONS_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_OPERATIONS_H

#include <array>
#include <cstddef>
#include <string>

/// What an operation is for. `VexRescan` counts as an action: it makes the library do something.
enum class OperationKind { LIFETIME, READING, ACTION, EVENT };

struct ScriptedOperation {
  const char* name;
  OperationKind kind;
};

constexpr std::size_t kOperationCount = 50;

/// All operations of the library, in the order of its header.
const std::array<ScriptedOperation, kOperationCount>& scriptedOperations();

/// The operation of this name. Raises `std::invalid_argument` for a name that the library does not have.
const ScriptedOperation& scriptedOperation(const std::string& name);

#endif
