#ifndef MIRN_CONTRACT_ASCII_H
#define MIRN_CONTRACT_ASCII_H

#include <cstdint>

/// Whether the text has ASCII alone, as nearly all texts do: then each of its units is itself in every
/// encoding, and neither locale nor conversion has a say. Looks at all units, without a branch a unit.
template <class Text>
bool isAscii(const Text& text) {
  std::uint32_t bits = 0;
  for (const auto unit : text) bits |= static_cast<std::uint32_t>(unit);
  return bits < 0x80U;
}

#endif
