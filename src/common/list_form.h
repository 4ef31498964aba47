#ifndef MIRN_COMMON_LIST_FORM_H
#define MIRN_COMMON_LIST_FORM_H

#include <cstddef>
#include <string>

#include "ServiceObject.h"

/// Lists as clients see them.

/// The `form` of each object that `keep` accepts, in the list's order.
template <class Objects, class Predicate, class Form>
ovra::data_transfer::ServiceObject listOf(const Objects& objects, Predicate keep, Form form) {
  auto list = ovra::data_transfer::ServiceObject::array();
  std::size_t count = 0;
  for (const auto& object : objects) {
    if (keep(object)) list.at(count++) = form(object);
  }
  return list;
}

/// The `form` of each object, in the list's order.
template <class Objects, class Form>
ovra::data_transfer::ServiceObject listOf(const Objects& objects, Form form) {
  return listOf(
      objects, [](const auto&) { return true; }, form);
}

/// The texts as they are.
template <class Texts>
ovra::data_transfer::ServiceObject textsOf(const Texts& texts) {
  return listOf(texts, [](const auto& text) { return std::wstring(text); });
}

#endif
