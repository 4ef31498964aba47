#ifndef MIRN_TESTS_SUPPORT_VIRTUAL_SLOT_H
#define MIRN_TESTS_SUPPORT_VIRTUAL_SLOT_H

#include <cstddef>
#include <cstring>

/// Place of a virtual operation in its class's table of virtual operations, from 0. A virtual destructor
/// takes two places. For the C++ ABI that g++ and clang share, where a pointer to a virtual member starts
/// with its byte offset in the table, plus one.
template <class Operation>
std::size_t virtualSlot(Operation operation) {
  std::ptrdiff_t word = 0;
  static_assert(sizeof(operation) >= sizeof(word), "a pointer to member holds at least one word");
  std::memcpy(&word, &operation, sizeof(word));
  return static_cast<std::size_t>(word - 1) / sizeof(void*);
}

#endif
