#include <cerrno>
#include <system_error>

#include "system/system_reason.h"

namespace host {

std::runtime_error lastSystemFailure() { return std::runtime_error(std::generic_category().message(errno)); }

}  // namespace host
