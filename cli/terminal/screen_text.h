#ifndef MIRN_CLI_TERMINAL_SCREEN_TEXT_H
#define MIRN_CLI_TERMINAL_SCREEN_TEXT_H

#include <string>
#include <vector>

namespace mirnctl {

/// What terminals of every system understand.
inline constexpr char kOwnScreen[] = "\033[?1049h\033[?25l";
inline constexpr char kFormerScreen[] = "\033[?25h\033[?1049l";

/// Puts these lines in the place of what is seen.
std::string screenText(const std::vector<std::string>& lines);

}  // namespace mirnctl

#endif
