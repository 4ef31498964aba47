#ifndef MIRN_SIMULATOR_SCENARIO_OBJECT_COMPARER_H
#define MIRN_SIMULATOR_SCENARIO_OBJECT_COMPARER_H

#include <optional>
#include <string_view>
#include <vector>

#include "scenario/fields.h"

namespace simulator {

/// Tells whether two structs are alike in all that a scenario file holds of them.
template <class T>
class ObjectComparer {
 public:
  ObjectComparer(const T& one, const T& other) : m_one(one), m_other(other) {}

  bool areAlike() {
    fields(*this, Of<T>{});
    return m_areAlike;
  }

  void identity(Kind, std::size_t) {
    member(&T::id);
    handle();
  }
  void handle() { member(&T::handle); }

  template <class Number>
  void number(std::string_view, Number T::*field, Need = Need::OPTIONAL) {
    member(field);
  }
  void flag(std::string_view, bool T::*field) { member(field); }
  void text(std::string_view, std::string T::*field, std::size_t, Need = Need::OPTIONAL) { member(field); }
  template <class Code>
  void word(std::string_view, Code T::*field, Need = Need::OPTIONAL) {
    member(field);
  }
  template <class Code>
  void words(std::string_view, std::uint32_t T::*field) {
    member(field);
  }
  void address(std::string_view, std::uint32_t T::*field) { member(field); }
  void reference(std::string_view, Handle T::*field, unsigned, Need = Need::OPTIONAL) { member(field); }
  void references(std::string_view, std::vector<Handle> T::*field, unsigned, Need = Need::OPTIONAL) {
    member(field);
  }

  template <class Part>
  void object(std::string_view, Part T::*field) {
    part(m_one.*field, m_other.*field);
  }

  template <class Part>
  void maybe(std::string_view, std::optional<Part> T::*field) {
    const auto& one = m_one.*field;
    const auto& other = m_other.*field;
    m_areAlike = m_areAlike && one.has_value() == other.has_value();
    if (one && other) part(*one, *other);
  }

  template <class Part>
  void list(std::string_view, std::vector<Part> T::*field) {
    const auto& one = m_one.*field;
    const auto& other = m_other.*field;
    m_areAlike = m_areAlike && one.size() == other.size();
    for (std::size_t i = 0; m_areAlike && i < one.size(); ++i) part(one[i], other[i]);
  }

 private:
  template <class Value>
  void member(Value T::*field) {
    m_areAlike = m_areAlike && m_one.*field == m_other.*field;
  }

  template <class Part>
  void part(const Part& one, const Part& other) {
    m_areAlike = m_areAlike && ObjectComparer<Part>(one, other).areAlike();
  }

  const T& m_one;
  const T& m_other;
  bool m_areAlike = true;
};

}  // namespace simulator

#endif
