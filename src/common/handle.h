#ifndef MIRN_COMMON_HANDLE_H
#define MIRN_COMMON_HANDLE_H

#include <cstdint>

/// Names one object of the storage library; 0 is no object. The model keeps handles without knowing the
/// library's declarations; that both mean the same type is checked where the two meet.
using VEX_HANDLE = std::uint32_t;

#endif
