#ifndef MIRN_COMMON_FIND_BY_ID_H
#define MIRN_COMMON_FIND_BY_ID_H

#include <algorithm>
#include <string>

#include "service_exceptions.h"
#include "text.h"

/// The first object of the list with exactly this id, as a reference into the list. None raises a
/// `ListenerException` with the error id and message given.
template <class Objects>
auto& findById(Objects& objects, const std::wstring& id, const std::string& errorId,
               const std::string& message) {
  const auto found =
      std::find_if(objects.begin(), objects.end(), [&id](const auto& object) { return object.id() == id; });
  if (found == objects.end()) throw ListenerException(errorId, message);
  return *found;
}

/// The same for a wide message.
template <class Objects>
auto& findById(Objects& objects, const std::wstring& id, const std::string& errorId,
               const std::wstring& message) {
  return findById(objects, id, errorId, wideToUtf8(message));
}

#endif
