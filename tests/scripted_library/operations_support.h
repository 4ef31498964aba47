#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_OPERATIONS_SUPPORT_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_OPERATIONS_SUPPORT_H

#include <algorithm>
#include <vector>

#include "scripted_library/argument_description.h"
#include "scripted_library/scripted_library.h"
#include "VEXL2.h"

/// The shapes that the fifty operations come in. `operation` is the name of the operation that calls.

/// Any operation: answers with what `answer` says of the machine.
template <class Answer, class... Arguments>
VEX_STATUS respond(const char* operation, Answer answer, const Arguments&... arguments) {
  return ScriptedLibrary::instance().perform(
      operation, [&arguments...] { return describeAll(arguments...); }, answer);
}

/// An action: answers 0; effects do the rest.
template <class... Arguments>
VEX_STATUS act(const char* operation, const Arguments&... arguments) {
  return respond(
      operation, [](ScriptedMachine&) { return VEX_STATUS_SUCCESS; }, arguments...);
}

/// Answers as `act`, but 2 when `required` is null.
template <class... Arguments>
VEX_STATUS actWith(const void* required, const char* operation, const Arguments&... arguments) {
  const auto answer = [required](ScriptedMachine&) {
    return required == nullptr ? VEX_STATUS_INVALID_PARAMETER : VEX_STATUS_SUCCESS;
  };
  return respond(operation, answer, arguments...);
}

/// Stores a value where the caller wants it.
template <class Value>
VEX_STATUS store(const Value& value, Value* out) {
  if (out == nullptr) return VEX_STATUS_INVALID_PARAMETER;
  *out = value;
  return VEX_STATUS_SUCCESS;
}

/// The last step of an enumeration: into the buffer, or the number that is needed.
inline VEX_STATUS storeHandles(const std::vector<VEX_HANDLE>& found, VEX_HANDLE* handles,
                               std::uint32_t* count) {
  if (count == nullptr) return VEX_STATUS_INVALID_PARAMETER;
  const auto needed = static_cast<std::uint32_t>(found.size());
  const bool fits = needed == 0 || (handles != nullptr && *count >= needed);
  *count = needed;
  if (!fits) return VEX_STATUS_NOT_ENOUGH_ITEMS;
  std::copy(found.begin(), found.end(), handles);
  return VEX_STATUS_SUCCESS;
}

/// An answer for those who have an open session.
template <class Answer>
auto inSession(VEX_HANDLE session, Answer answer) {
  return [session, answer](ScriptedMachine& machine) {
    return ScriptedLibrary::instance().isOpen(session) ? answer(machine) : VEX_STATUS_INVALID_SESSION;
  };
}

using ScopedList = VEX_STATUS (ScriptedMachine::*)(Scope scope, std::vector<VEX_HANDLE>& found) const;

/// An enumeration with a scope.
inline VEX_STATUS enumerate(const char* operation, ScopedList list, VEX_HANDLE session, Scope scope,
                            VEX_HANDLE* handles, std::uint32_t* count) {
  const auto answer = [=](const ScriptedMachine& machine) {
    std::vector<VEX_HANDLE> found;
    const VEX_STATUS status = (machine.*list)(scope, found);
    return status == VEX_STATUS_SUCCESS ? storeHandles(found, handles, count) : status;
  };
  return respond(operation, inSession(session, answer), session, scope.type, scope.handle, Out{handles, 0},
                 Count{count});
}

/// A record by its handle.
template <class List, class Record>
VEX_STATUS readRecord(const char* operation, List ScriptedMachine::*list, VEX_HANDLE session,
                      VEX_HANDLE handle, Record* info) {
  const auto answer = [=](const ScriptedMachine& machine) {
    if (!(machine.*list).has(handle)) return VEX_STATUS_INVALID_HANDLE;
    return store((machine.*list).at(handle), info);
  };
  return respond(operation, inSession(session, answer), session, handle, outRecord(info));
}

#endif
