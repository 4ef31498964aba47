#ifndef MIRN_LIBRARY_KNOWN_TEXT_H
#define MIRN_LIBRARY_KNOWN_TEXT_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

#include "identifiers.h"
#include "shared_text.h"
#include "text.h"

/// The kinds of texts that a `TextSequence` holds. Each can be made of a source, tells whether it was made of
/// the same, without making anything, and has a hash of that. A source is a number, or a field of a record as
/// it stands, read up to its first NUL; such a field that is not UTF-8 raises `std::range_error`.

/// What `kForm` makes of a field of up to `kLongestField` bytes, which is kept beside it: an id, say.
template <std::size_t kLongestField, std::wstring (*kForm)(std::string_view)>
class FormedText {
 public:
  using Source = std::string_view;
  static constexpr std::size_t kLongest = kLongestField;

  explicit FormedText(Source field) : m_text(kForm(untilNul(field))) {
    untilNul(field).copy(m_source, kLongest);
  }

  bool isMadeOf(Source field) const {
    return std::strncmp(m_source, field.data(), field.size()) == 0 &&
           (field.size() == kLongest || m_source[field.size()] == '\0');
  }
  static std::size_t hashOf(Source field) { return std::hash<std::string_view>()(untilNul(field)); }
  std::size_t hash() const { return hashOf({m_source, kLongest}); }
  const SharedText& text() const { return m_text; }

 private:
  SharedText m_text;
  char m_source[kLongest] = {};
};

/// A field itself. Nearly all are ASCII, and known again by their units.
class PlainText {
 public:
  using Source = std::string_view;
  static constexpr std::size_t kLongest = SIZE_MAX;

  explicit PlainText(Source field) : m_text(wideFromNarrow(field)) {}

  bool isMadeOf(Source field) const;
  static std::size_t hashOf(Source field) { return std::hash<std::string_view>()(untilNul(field)); }
  std::size_t hash() const { return hashOf(wideToUtf8(m_text)); }
  const SharedText& text() const { return m_text; }

 private:
  SharedText m_text;
};

/// What `addressToString` makes of an address.
class AddressText {
 public:
  using Source = std::uint32_t;

  explicit AddressText(Source address) : m_text(addressToString(address)), m_address(address) {}

  bool isMadeOf(Source address) const { return m_address == address; }
  static std::size_t hashOf(Source address) { return address; }
  std::size_t hash() const { return m_address; }
  const SharedText& text() const { return m_text; }

 private:
  SharedText m_text;
  std::uint32_t m_address;
};

#endif
