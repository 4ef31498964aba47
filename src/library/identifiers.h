#ifndef MIRN_LIBRARY_IDENTIFIERS_H
#define MIRN_LIBRARY_IDENTIFIERS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What stands ahead of the first NUL; all where there is none.
std::string_view untilNul(std::string_view text);

/// The library's UTF-8 text up to its first NUL, or whole where there is none. Text that is not UTF-8 raises
/// `std::range_error` with "bad conversion".
std::wstring wideFromNarrow(std::string_view text);

/// The same for a record's field, whose size is the bound.
template <std::size_t kSize>
std::wstring wideFromNarrow(const char (&field)[kSize]) {
  return wideFromNarrow(std::string_view(field, kSize));
}

/// The object id made from the library's identity text up to its first NUL: one to twenty decimal digits, the
/// same on every platform and at every start. Equal texts give equal ids.
std::wstring idFromUniqueId(std::string_view text);

template <std::size_t kSize>
std::wstring idFromUniqueId(const char (&field)[kSize]) {
  return idFromUniqueId(std::string_view(field, kSize));
}

/// The four bytes from lowest to highest, such as "1-2-3-4" for 0x04030201.
std::wstring addressToString(std::uint32_t address);

#endif
