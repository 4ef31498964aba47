#include "terminal/screen_text.h"

namespace mirnctl {

std::string screenText(const std::vector<std::string>& lines) {
  std::string text = "\033[H";
  for (std::size_t place = 0; place < lines.size(); ++place) {
    text += (place == 0 ? "" : "\n") + lines[place] + "\033[K";
  }
  return text + "\033[J";
}

}  // namespace mirnctl
