#ifndef MIRN_HOST_HTTP_CHARACTERS_H
#define MIRN_HOST_HTTP_CHARACTERS_H

#include <algorithm>
#include <string_view>

namespace host {

/// The kinds of characters that HTTP knows, whatever the locale says.

constexpr bool isDigit(char character) { return character >= '0' && character <= '9'; }

constexpr bool isLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

constexpr char toLower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// ASCII, neither blank nor control.
constexpr bool isVisible(char character) { return character > 0x20 && character < 0x7F; }

constexpr bool isControl(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

/// Of a method or a field's name.
constexpr bool isTokenCharacter(char character) {
  return isDigit(character) || isLetter(character) ||
         std::string_view("!#$%&'*+-.^_`|~").find(character) != std::string_view::npos;
}

/// Of a request target as clients send it: a URI, and what browsers leave as it is in a query.
constexpr bool isTargetCharacter(char character) {
  return isVisible(character) && character != '"' && character != '#' && character != '<' &&
         character != '>' && character != '\\';
}

template <class Kind>
bool hasOnly(std::string_view text, Kind kind) {
  return std::all_of(text.begin(), text.end(), kind);
}

}  // namespace host

#endif
