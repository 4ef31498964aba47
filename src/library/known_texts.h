#ifndef MIRN_LIBRARY_KNOWN_TEXTS_H
#define MIRN_LIBRARY_KNOWN_TEXTS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "non_copyable.h"
#include "shared_text.h"
#include "text_table.h"

/// The texts that objects are made of, each made once: what is read a second time, of another object or for
/// another picture, is the text that was made the first time. For one thread at a time.
class KnownTexts : private NonCopyable {
 public:
  /// As `idFromUniqueId`.
  SharedText id(std::string_view uniqueId);
  /// As `addressToString`.
  SharedText address(std::uint32_t address);
  /// As `wideFromNarrow`.
  SharedText text(std::string_view field);
  /// What `form` makes of that: made once for several in a row that are alike, as neighbours mostly are.
  SharedText formed(std::string_view field, std::wstring (*form)(const std::wstring&));

  template <std::size_t kSize>
  SharedText id(const char (&field)[kSize]) {
    return id(std::string_view(field, kSize));
  }
  template <std::size_t kSize>
  SharedText text(const char (&field)[kSize]) {
    return text(std::string_view(field, kSize));
  }
  template <std::size_t kSize>
  SharedText formed(const char (&field)[kSize], std::wstring (*form)(const std::wstring&)) {
    return formed(std::string_view(field, kSize), form);
  }

  /// Lets go of the texts that no object has any more.
  void forgetUnused();

  std::size_t size() const { return m_ids.size() + m_addresses.size() + m_texts.size(); }

 private:
  struct Formed {
    std::string from;
    std::wstring (*form)(const std::wstring&) = nullptr;
    SharedText text;
  };

  SharedText same(std::wstring text);

  TextTable<std::uint64_t> m_ids;
  TextTable<std::uint32_t> m_addresses;
  TextTable<std::uint32_t> m_texts;
  Formed m_lastFormed;
};

#endif
