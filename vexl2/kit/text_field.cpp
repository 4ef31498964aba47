#include "text_field.h"

namespace vexl2 {

std::string_view cutText(std::string_view text, std::size_t maxBytes) {
  if (text.size() <= maxBytes) return text;
  std::size_t end = maxBytes;
  const auto isInsideCharacter = [&] { return (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U; };
  while (end > 0 && isInsideCharacter()) --end;
  return text.substr(0, end);
}

}  // namespace vexl2
