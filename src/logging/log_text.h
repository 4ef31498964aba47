#ifndef MIRN_LOGGING_LOG_TEXT_H
#define MIRN_LOGGING_LOG_TEXT_H

#include <string>

namespace ovra {
namespace log {

/// `text` in ASCII: every other code unit becomes a backslash, a "u" and its four hexadecimal digits.
std::wstring escapeText(const std::wstring& text);

}  // namespace log
}  // namespace ovra

#endif
