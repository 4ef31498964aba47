#ifndef MIRN_COMMON_PUBLISHED_FORM_H
#define MIRN_COMMON_PUBLISHED_FORM_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "ServiceObject.h"

/// Writes an object key by key; the verb tells how the value goes on the wire:
///
///     return PublishedForm().text(keys::kName, m_name).size(keys::kTotalSize, m_totalSize).take();
///
/// A form without a key is the null value.
class PublishedForm {
 public:
  using ServiceObject = ovra::data_transfer::ServiceObject;

  PublishedForm& text(const wchar_t* key, std::wstring value);
  PublishedForm& number(const wchar_t* key, std::uint64_t value);
  /// A number written as a decimal text, so that it survives clients that count in doubles.
  PublishedForm& size(const wchar_t* key, std::uint64_t value);
  /// A template, so that nothing but a boolean is taken.
  template <class Bool, class = std::enable_if_t<std::is_same<Bool, bool>::value>>
  PublishedForm& flag(const wchar_t* key, Bool value) {
    member(key) = value;
    return *this;
  }
  PublishedForm& texts(const wchar_t* key, const std::vector<std::wstring>& values);
  /// A part that is built elsewhere: an object, an array or the null value. Moves into its place.
  PublishedForm& part(const wchar_t* key, ServiceObject value);

  /// Hands the form over and leaves nothing behind.
  ServiceObject take() { return std::move(m_object); }

 private:
  ServiceObject& member(const wchar_t* key) {
    m_key = key;
    return m_object.member(m_key);
  }

  static std::wstring roomForKeys() {
    constexpr std::size_t kLongest = 32;
    std::wstring room;
    room.reserve(kLongest);
    return room;
  }

  ServiceObject m_object;
  std::wstring m_key = roomForKeys();  // the last one, so that its memory serves for the next
};

#endif
