#ifndef MIRN_HOST_CONTROLS_CONTROL_ARGUMENTS_H
#define MIRN_HOST_CONTROLS_CONTROL_ARGUMENTS_H

#include <cstdint>
#include <string>
#include <vector>

#include "ServiceObject.h"

namespace host {

/// The arguments of a simulator control, read from the body of its request. What cannot be read raises a
/// `Refusal` 400 that names the argument.
class ControlArguments {
 public:
  using Value = ovra::data_transfer::ServiceObject;

  /// `body` is an object, or null for no arguments, and outlives this; `names` are the arguments that there
  /// may be in it.
  ControlArguments(const Value& body, const std::vector<std::wstring>& names);

  /// As UTF-8.
  std::string text(const std::wstring& name) const;
  /// `fallback` when the argument is missing.
  std::string text(const std::wstring& name, const std::string& fallback) const;

  /// The JSON text of an object.
  std::string document(const std::wstring& name) const;

  std::uint64_t longNumber(const std::wstring& name) const;
  std::uint64_t longNumber(const std::wstring& name, std::uint64_t fallback) const;
  std::uint32_t number(const std::wstring& name) const;
  /// `fallback` when the argument is missing.
  std::uint32_t number(const std::wstring& name, std::uint32_t fallback) const;

 private:
  bool has(const std::wstring& name) const;
  const Value& value(const std::wstring& name) const;

  const Value& m_body;
};

}  // namespace host

#endif
