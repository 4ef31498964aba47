#ifndef MIRN_CLI_ANSWERS_TABLE_H
#define MIRN_CLI_ANSWERS_TABLE_H

#include <string>
#include <vector>

namespace mirnctl {

enum class Colour { kNone, kGood, kNotice, kBad };

struct Cell {
  std::string text;
  Colour colour = Colour::kNone;
  bool isNumber = false;  ///< Stands on the right.
};

/// How wide a terminal is, and whether it has colours.
struct Screen {
  std::size_t width = 0;  ///< Cells of a line; 0: any number.
  bool hasColours = false;
};

std::string coloured(const std::string& text, Colour colour, const Screen& screen);

/// Rows below headings, aligned; where they are too wide for the screen, sentences of the last column go on
/// below themselves or stand below their rows, and else the widest columns are cut.
std::string table(const std::vector<std::string>& headings, const std::vector<std::vector<Cell>>& rows,
                  const Screen& screen);

/// Of a word of state or severity.
Colour colourOf(const std::string& word);

}  // namespace mirnctl

#endif
