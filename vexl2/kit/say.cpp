#include "say.h"

#include <iostream>

namespace vexl2 {

void say(const std::string& text) { std::cerr << "VEXL2: " + text + "\n" << std::flush; }

}  // namespace vexl2
