#include "log_text.h"

#include <cstdint>
#include <iomanip>
#include <locale>
#include <sstream>

namespace ovra {
namespace log {

std::wstring escapeText(const std::wstring& text) {
  std::wostringstream escaped;
  escaped.imbue(std::locale::classic());
  escaped << std::hex << std::uppercase << std::setfill(L'0');
  for (const wchar_t unit : text) {
    const auto code = static_cast<std::uint32_t>(unit);
    if (code < 0x80) {
      escaped << unit;
    } else {
      escaped << L"\\u" << std::setw(4) << code;
    }
  }
  return escaped.str();
}

}  // namespace log
}  // namespace ovra
