#ifndef MIRN_SESSION_PREPARED_CALL_MAKING_H
#define MIRN_SESSION_PREPARED_CALL_MAKING_H

#include <memory>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "action_parameters.h"
#include "prepared_call.h"

/// How a `PreparedCall` is made of the library's function and its arguments, each of them told once: plain
/// numbers as they are, all else in one of the wrappers below.
namespace call_making {

/// Handles that a pointer leads to. All copies of a call show the same ones.
using SharedHandles = std::shared_ptr<const std::vector<VEX_HANDLE>>;

inline SharedHandles sharedHandlesOf(const std::vector<EndDevice>& devices) {
  return std::make_shared<const std::vector<VEX_HANDLE>>(handlesOf(devices));
}

/// A record by value.
template <class Record>
struct ByValue {
  Record record;
};

/// A record by value that points to handles, in its field `disks`.
template <class Record>
struct WithDisks {
  Record record;
  SharedHandles handles;
};

/// A record by pointer.
template <class Record>
struct ByPointer {
  Record record;
};

/// A list of handles by pointer; their number is an argument of its own.
struct HandleList {
  SharedHandles handles;
};

/// A text that ends with a zero.
struct Text {
  std::string text;
};

/// Where the library stores a handle that nobody reads.
struct UnreadHandle {
  mutable VEX_HANDLE handle = 0;
};

template <class Record>
ByValue<Record> byValue(const Record& record) {
  return {record};
}

template <class Record>
ByPointer<Record> byPointer(const Record& record) {
  return {record};
}

template <class Record>
WithDisks<Record> withDisks(const Record& record, const SharedHandles& handles) {
  return {record, handles};
}

// What goes to the library.

template <class Number, class = std::enable_if_t<std::is_unsigned_v<Number>>>
Number handed(Number number) {
  return number;
}
template <class Record>
const Record& handed(const ByValue<Record>& argument) {
  return argument.record;
}
template <class Record>
const Record& handed(const WithDisks<Record>& argument) {
  return argument.record;
}
template <class Record>
const Record* handed(const ByPointer<Record>& argument) {
  return &argument.record;
}
inline const VEX_HANDLE* handed(const HandleList& argument) { return handlesOrNull(*argument.handles); }
inline const char* handed(const Text& argument) { return argument.text.c_str(); }
inline VEX_HANDLE* handed(const UnreadHandle& argument) { return &argument.handle; }

// What the call tells of itself.

template <class Record>
std::string bytesOf(const Record& record) {
  static_assert(std::is_trivially_copyable_v<Record>);
  return {reinterpret_cast<const char*>(&record), sizeof record};
}

template <class Number, class = std::enable_if_t<std::is_unsigned_v<Number>>>
void tell(PreparedCall& call, Number number) {
  call.arguments.push_back(number);
}
template <class Record>
void tell(PreparedCall& call, const ByValue<Record>& argument) {
  call.record = bytesOf(argument.record);
}
template <class Record>
void tell(PreparedCall& call, const ByPointer<Record>& argument) {
  call.record = bytesOf(argument.record);
}
template <class Record>
void tell(PreparedCall& call, const WithDisks<Record>& argument) {
  Record record = argument.record;
  record.disks = nullptr;
  call.record = bytesOf(record);
  call.handles = *argument.handles;
}
inline void tell(PreparedCall& call, const HandleList& argument) { call.handles = *argument.handles; }
inline void tell(PreparedCall& call, const Text& argument) { call.record = argument.text; }
inline void tell(PreparedCall&, const UnreadHandle&) {}

template <class... Parameters, class... Arguments>
PreparedCall made(const char* operation, VEX_STATUS (*function)(Parameters...), Arguments... arguments) {
  PreparedCall call;
  call.operation = operation;
  (tell(call, arguments), ...);
  call.make = [function, held = std::make_tuple(std::move(arguments)...)] {
    return std::apply([function](const auto&... each) { return function(handed(each)...); }, held);
  };
  return call;
}

/// The same with another error id for one status.
inline PreparedCall mapped(PreparedCall call, VEX_STATUS status, const char* errorId) {
  call.mappedStatus = status;
  call.mappedErrorId = errorId;
  return call;
}

}  // namespace call_making

#endif
