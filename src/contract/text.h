#ifndef MIRN_CONTRACT_TEXT_H
#define MIRN_CONTRACT_TEXT_H

#include <string>
#include <vector>

/// Wide text holds UTF-16 code units on every platform: in `wchar_t` of 16 bits (Windows) or of 32
/// (elsewhere). Both conversions go through UTF-8 to UTF-16 with the maximum code 0x10FFFF, keep embedded
/// NULs, and raise `std::range_error` with "bad conversion" for text that cannot be converted: half of a
/// surrogate pair, on either side, is such a text. They are safe from any thread.

std::string wideToUtf8(const std::wstring& text);
std::wstring utf8ToWide(const std::string& text);

/// The parts in their order, with `separator` between them.
std::wstring joined(const std::vector<std::wstring>& parts, const std::wstring& separator);

#endif
