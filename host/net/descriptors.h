#ifndef MIRN_HOST_NET_DESCRIPTORS_H
#define MIRN_HOST_NET_DESCRIPTORS_H

#include <cstddef>

namespace host {

/// Asks the system for as many descriptors as `connections` and the rest of the process want, as far as it
/// lets this process go; one source a system. Fewer are no failure: clients wait, or take others' places.
void allowDescriptors(std::size_t connections);

}  // namespace host

#endif
