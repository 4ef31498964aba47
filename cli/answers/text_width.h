#ifndef MIRN_CLI_ANSWERS_TEXT_WIDTH_H
#define MIRN_CLI_ANSWERS_TEXT_WIDTH_H

#include <string>
#include <string_view>
#include <vector>

namespace mirnctl {

/// How many cells a terminal needs for UTF-8 text: one a character.
std::size_t widthOf(std::string_view text);

/// The text in at most `width` cells, cut off with "…" where it is longer.
std::string shortened(std::string_view text, std::size_t width);

/// The text in lines of at most `width` cells, broken at blanks; a longer word has a line of its own. One
/// line where `width` is 0.
std::vector<std::string> wrapped(std::string_view text, std::size_t width);

/// The same as one text, with lines' ends and `indent` cells ahead of all lines but the first. As it is where
/// there is no room.
std::string hanging(std::string_view text, std::size_t indent, std::size_t width);

/// Control characters, which a terminal would obey, as "?".
std::string printable(std::string_view text);

}  // namespace mirnctl

#endif
