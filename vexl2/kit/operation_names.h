#ifndef MIRN_VEXL2_KIT_OPERATION_NAMES_H
#define MIRN_VEXL2_KIT_OPERATION_NAMES_H

#include <string_view>

namespace vexl2 {

/// Whether the library has an operation of this name, one of fifty.
bool isOperationName(std::string_view name);

}  // namespace vexl2

#endif
