#ifndef MIRN_TESTS_COMMON_NAMED_H
#define MIRN_TESTS_COMMON_NAMED_H

#include <string>
#include <utility>

/// An object that is nothing but its id.
class Named {
 public:
  explicit Named(std::wstring id) : m_id(std::move(id)) {}
  const std::wstring& id() const { return m_id; }

 private:
  std::wstring m_id;
};

#endif
