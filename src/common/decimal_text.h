#ifndef MIRN_COMMON_DECIMAL_TEXT_H
#define MIRN_COMMON_DECIMAL_TEXT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

/// No number of 64 bits has more decimal digits.
constexpr std::size_t kMostDecimalDigits = std::numeric_limits<std::uint64_t>::digits10 + 1;

/// Writes the decimal digits of a number so that they end before `end`, and returns where they begin.
inline wchar_t* writeDigitsBefore(wchar_t* end, std::uint64_t number) {
  constexpr unsigned kBase = 10;
  do {
    *--end = static_cast<wchar_t>(L'0' + number % kBase);
    number /= kBase;
  } while (number != 0);
  return end;
}

/// A number in decimal digits, whatever the locale. `std::to_wstring` goes through the formatted print, which
/// is felt when thousands of objects are read.
inline std::wstring decimalText(std::uint64_t number) {
  std::array<wchar_t, kMostDecimalDigits> digits;
  wchar_t* const end = digits.data() + digits.size();
  return {writeDigitsBefore(end, number), end};
}

#endif
