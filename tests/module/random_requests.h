#ifndef MIRN_TESTS_MODULE_RANDOM_REQUESTS_H
#define MIRN_TESTS_MODULE_RANDOM_REQUESTS_H

#include <cstdint>
#include <random>
#include <vector>

#include "module/varied_requests.h"
#include "support/body.h"

/// Machines and requests at random, from one seed, the same on every platform. Most requests are nearly good:
/// some route's, with a part of it exchanged for something that stands elsewhere.
class RandomRequests {
 public:
  explicit RandomRequests(std::uint32_t seed);

  /// The varied machine with other states, usages, sizes and flags, the same handles and the same names.
  ScriptedMachine machine();

  Request request();

  /// Something that may stand in a body.
  ServiceObject value();
  /// A key of a body, or a name in a path in braces.
  std::wstring argument();

  /// One of 0 to `count` - 1.
  std::size_t below(std::size_t count) { return m_random() % count; }

 private:
  template <class List>
  const auto& oneOf(const List& list) {
    return list[below(std::size(list))];
  }
  bool oneIn(std::size_t count) { return below(count) == 0; }

  std::wstring id();
  void mutate(Request& request);
  void mutateBody(ServiceObject& body);

  std::mt19937 m_random;
  std::vector<VariedRequest> m_varied = variedRequests();
};

#endif
