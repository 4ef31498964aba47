#include "stream/stream_id.h"

#include <regex>

namespace insight {

std::optional<StreamId> streamIdOf(const std::string& text) {
  static const std::regex kForm("([0-9a-f]{16})\\.([0-9]{1,18})");
  std::smatch parts;
  if (!std::regex_match(text, parts, kForm)) return {};
  return StreamId{parts[1].str(), std::stoll(parts[2].str())};
}

}  // namespace insight
