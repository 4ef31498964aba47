#ifndef MIRN_SESSION_FORM_SAMENESS_H
#define MIRN_SESSION_FORM_SAMENESS_H

#include "ServiceObject.h"
#include "volume.h"

/// Compares published forms by making them.

inline bool sameValues(const ovra::data_transfer::ServiceObject& one,
                       const ovra::data_transfer::ServiceObject& other) {
  if (one.which() != other.which()) return false;
  if (!one.isObject() && !one.isArray()) return one.toString() == other.toString();
  auto second = other.begin();
  for (auto first = one.begin(); first != one.end(); ++first, ++second) {
    if (second == other.end() || (*first).key != (*second).key) return false;
    if (!sameValues(*(*first).value, *(*second).value)) return false;
  }
  return second == other.end();
}

template <class Object>
bool sameForm(const Object& one, const Object& other) {
  return sameValues(one.toServiceObject(), other.toServiceObject());
}

template <class Object>
bool sameStructure(const Object& one, const Object& other) {
  return sameForm(one, other);
}

#endif
