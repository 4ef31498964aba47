#ifndef MIRN_VEXL2_KIT_SAY_H
#define MIRN_VEXL2_KIT_SAY_H

#include <string>

namespace vexl2 {

/// Tells whoever started the program, in one line on standard error: "VEXL2: " and the text. An operation can
/// answer a status only.
void say(const std::string& text);

}  // namespace vexl2

#endif
