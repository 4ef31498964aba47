#ifndef MIRN_LIBRARY_RECORD_READING_H
#define MIRN_LIBRARY_RECORD_READING_H

#include <algorithm>
#include <cstdint>
#include <exception>
#include <stdexcept>
#include <utility>
#include <vector>

#include "vex_exception.h"
#include "VEXL2.h"

/// What all kinds of objects have in common when they are read. Every refusal of the library
/// raises `VexException`.

/// An enumeration of the library with a scope.
using ScopedEnumeration = VEX_STATUS (*)(VEX_HANDLE session, VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle,
                                         VEX_HANDLE* handles, std::uint32_t* count);

/// The handles that `list(handles, count)` gives: one call for the number, one for the handles. A
/// configuration that grows between the two fails the read; one that shrinks gives the number returned last.
template <class List>
std::vector<VEX_HANDLE> listHandles(List list) {
  std::uint32_t count = 0;
  std::vector<VEX_HANDLE> handles;
  const VEX_STATUS status = list(nullptr, &count);
  if (status == VEX_STATUS_NOT_ENOUGH_ITEMS) {
    handles.resize(count);
  } else {
    raiseUnlessSuccess(status);
  }
  raiseUnlessSuccess(list(handles.empty() ? nullptr : handles.data(), &count));
  handles.resize(std::min<std::size_t>(count, handles.size()));
  return handles;
}

/// The same for an enumeration with a scope.
inline std::vector<VEX_HANDLE> listHandles(ScopedEnumeration enumeration, VEX_HANDLE session,
                                           VEX_SCOPE_TYPE scope, VEX_HANDLE scopeHandle) {
  return listHandles([=](VEX_HANDLE* handles, std::uint32_t* count) {
    return enumeration(session, scope, scopeHandle, handles, count);
  });
}

/// The library's operation for the records of a kind.
template <class Record>
using RecordOperation = VEX_STATUS (*)(VEX_HANDLE session, VEX_HANDLE handle, Record* record);

/// Hands the record of each of these objects to `take`, in order.
template <class Record, class Take>
void readEachRecord(RecordOperation<Record> read, VEX_HANDLE session, const std::vector<VEX_HANDLE>& handles,
                    Take take) {
  for (const VEX_HANDLE handle : handles) {
    Record record = {};
    raiseUnlessSuccess(read(session, handle, &record));
    take(record);
  }
}

/// The records of these objects, in order.
template <class Record>
std::vector<Record> readRecords(RecordOperation<Record> read, VEX_HANDLE session,
                                const std::vector<VEX_HANDLE>& handles) {
  std::vector<Record> records;
  records.reserve(handles.size());
  for (const VEX_HANDLE handle : handles) {
    Record& record = records.emplace_back();
    raiseUnlessSuccess(read(session, handle, &record));
  }
  return records;
}

/// What `convert` makes of these records, none of which is kept. All are read, whatever becomes of the first:
/// text that is not UTF-8 raises its `std::range_error` behind the last.
template <class Record, class Convert>
auto readConverted(RecordOperation<Record> read, VEX_HANDLE session, const std::vector<VEX_HANDLE>& handles,
                   Convert convert) {
  std::vector<decltype(convert(std::declval<const Record&>()))> objects;
  objects.reserve(handles.size());
  std::exception_ptr badText;
  readEachRecord<Record>(read, session, handles, [&](const Record& record) {
    if (badText) return;
    try {
      objects.push_back(convert(record));
    } catch (const std::range_error&) {
      badText = std::current_exception();
    }
  });
  if (badText) std::rethrow_exception(badText);
  return objects;
}

#endif
