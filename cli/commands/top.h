#ifndef MIRN_CLI_COMMANDS_TOP_H
#define MIRN_CLI_COMMANDS_TOP_H

#include <string>
#include <vector>

#include "commands/context.h"

namespace mirnctl {

/// What `top` shows of a machine. Plain value.
struct Overview {
  std::string place;    ///< Where it was asked.
  std::string trouble;  ///< Why nothing newer is known; empty: it is.
  boost::json::value health, jobs, history;
};

/// Its lines for a screen of that size: the worst state, what is wrong, work under way, what happened last.
/// What has no room is counted.
std::vector<std::string> linesOf(const Overview& overview, std::size_t height, const Screen& screen);

/// A live screen of that, until somebody ends it. Raises `Failure` without a terminal.
void top(const Context& context);

}  // namespace mirnctl

#endif
