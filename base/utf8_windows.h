#ifndef MIRN_BASE_UTF8_WINDOWS_H
#define MIRN_BASE_UTF8_WINDOWS_H

#include <string>

/// Text of the system as UTF-8. Half of a surrogate pair becomes U+FFFD.
std::string asUtf8(const std::wstring& text);

#endif
