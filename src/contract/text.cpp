#include "text.h"

#include <codecvt>
#include <cwchar>
#include <stdexcept>

#include "ascii.h"

namespace {

using Facet = std::codecvt_utf8_utf16<wchar_t, 0x10FFFF>;

std::range_error badConversion() { return std::range_error("bad conversion"); }

/// A text is converted whole or not at all: a sequence that ends too early is as bad as a wrong one.
template <class From>
void requireWhole(std::codecvt_base::result result, const From* converted, const From* end) {
  if (result != std::codecvt_base::ok || converted != end) throw badConversion();
}

/// The facet lets encoded halves of surrogate pairs through, which no UTF-8 text may hold: bytes 0xED, 0xA0
/// to 0xBF. The first of them begins no other sequence and goes on none.
bool holdsSurrogate(const std::string& utf8) {
  for (std::size_t at = utf8.find('\xED'); at != std::string::npos; at = utf8.find('\xED', at + 1)) {
    if (at + 1 < utf8.size() && static_cast<unsigned char>(utf8[at + 1]) >= 0xA0) return true;
  }
  return false;
}

}  // namespace

std::string wideToUtf8(const std::wstring& text) {
  if (isAscii(text)) return {text.begin(), text.end()};
  const Facet facet;
  std::mbstate_t state{};
  std::string result(text.size() * 4, '\0');  // no unit takes more bytes
  const wchar_t* converted = nullptr;
  char* end = nullptr;
  const auto outcome = facet.out(state, text.data(), text.data() + text.size(), converted, &result[0],
                                 &result[0] + result.size(), end);
  requireWhole(outcome, converted, text.data() + text.size());
  result.resize(static_cast<std::size_t>(end - result.data()));
  return result;
}

std::wstring utf8ToWide(const std::string& text) {
  if (isAscii(text)) return {text.begin(), text.end()};
  if (holdsSurrogate(text)) throw badConversion();
  const Facet facet;
  std::mbstate_t state{};
  std::wstring result(text.size(), L'\0');  // no code takes more units than bytes
  const char* converted = nullptr;
  wchar_t* end = nullptr;
  const auto outcome = facet.in(state, text.data(), text.data() + text.size(), converted, &result[0],
                                &result[0] + result.size(), end);
  requireWhole(outcome, converted, text.data() + text.size());
  result.resize(static_cast<std::size_t>(end - result.data()));
  return result;
}

std::wstring joined(const std::vector<std::wstring>& parts, const std::wstring& separator) {
  std::wstring result;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i > 0) result += separator;
    result += parts[i];
  }
  return result;
}
