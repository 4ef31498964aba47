#ifndef MIRN_CLI_COMMANDS_FOLLOW_H
#define MIRN_CLI_COMMANDS_FOLLOW_H

#include <functional>
#include <string>
#include <string_view>

#include "commands/context.h"

namespace mirnctl {

/// Takes server-sent events from text that comes in pieces. One stream.
class StreamReader {
 public:
  struct Event {
    std::string id, name, data;
  };

  /// Hands on each event that is whole with `piece`.
  void take(std::string_view piece, const std::function<void(const Event&)>& tell);

 private:
  void takeLine(std::string_view line, const std::function<void(const Event&)>& tell);

  std::string m_line;
  Event m_event;
};

/// Shows what happens as it happens, until the service stops or somebody ends the program.
void follow(const Context& context);

}  // namespace mirnctl

#endif
