#include <cerrno>
#include <system_error>

#include "host/system_reason.h"

std::runtime_error lastSystemFailure() { return std::runtime_error(std::generic_category().message(errno)); }
