#ifndef MIRN_COMMON_BUILDER_FLAGS_H
#define MIRN_COMMON_BUILDER_FLAGS_H

#include <cstddef>
#include <stdexcept>

#include "field.h"

/// The flags that a builder has for the fields of its class: one a field of the list that does not say
/// `withoutFlag`, in the list's order.

/// Counts flags along a list, and notes where one member's stands.
class FlagCount {
 public:
  constexpr explicit FlagCount(const char* sought = nullptr) : m_sought(sought) {}

  constexpr void operator()(const field::Facts& facts) {
    if (!facts.hasFlag) return;
    if (facts.id == m_sought) {
      m_place = m_count;
      m_found = true;
    }
    ++m_count;
  }

  constexpr std::size_t count() const { return m_count; }
  constexpr bool isFound() const { return m_found; }
  constexpr std::size_t place() const {
    return m_found ? m_place : throw std::out_of_range("the list has no flag for this member");
  }

 private:
  const char* m_sought;
  std::size_t m_count = 0;
  std::size_t m_place = 0;
  bool m_found = false;
};

template <class Object>
constexpr std::size_t flagCount() {
  FlagCount flags;
  Object::fields(flags);
  return flags.count();
}

template <auto kMember>
constexpr bool hasFlag() {
  FlagCount flags(&field::Identity<kMember>::kId);
  field::OwnerOf<kMember>::fields(flags);
  return flags.isFound();
}

/// The place of a member's flag. A member without one does not compile.
template <auto kMember>
constexpr std::size_t flagOf() {
  FlagCount flags(&field::Identity<kMember>::kId);
  field::OwnerOf<kMember>::fields(flags);
  return flags.place();
}

#endif
