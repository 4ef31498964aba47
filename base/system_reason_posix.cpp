#include "system_reason.h"

#include <cerrno>
#include <system_error>

std::runtime_error lastSystemFailure() { return std::runtime_error(std::generic_category().message(errno)); }
