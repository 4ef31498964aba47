#ifndef MIRN_SIMULATOR_CORE_OPERATION_NAMES_H
#define MIRN_SIMULATOR_CORE_OPERATION_NAMES_H

#include <string_view>

namespace simulator {

/// Whether the library has an operation of this name, one of fifty.
bool isOperationName(std::string_view name);

}  // namespace simulator

#endif
