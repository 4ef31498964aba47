#ifndef MIRN_BASE_RANDOM_BYTES_H
#define MIRN_BASE_RANDOM_BYTES_H

#include <cstddef>

/// Fills `bytes` with what nobody can guess. One source a system.
///
/// @throws std::runtime_error when the system has no randomness to give
void fillWithRandomBytes(unsigned char* bytes, std::size_t count);

#endif
