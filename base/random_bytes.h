#ifndef MIRN_BASE_RANDOM_BYTES_H
#define MIRN_BASE_RANDOM_BYTES_H

#include <cstddef>

/// Fills `bytes` with what nobody can guess. Raises `std::runtime_error` when the system has no randomness to
/// give. One source a system.
void fillWithRandomBytes(unsigned char* bytes, std::size_t count);

#endif
