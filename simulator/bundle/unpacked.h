#ifndef MIRN_SIMULATOR_BUNDLE_UNPACKED_H
#define MIRN_SIMULATOR_BUNDLE_UNPACKED_H

#include <string>
#include <string_view>

namespace simulator {

/// What is in a gzip file of one member. Raises a `BundleError` for another form, a wrong checksum or length,
/// bytes behind the end, and for more than a bundle may hold.
std::string unpacked(std::string_view gzip);

}  // namespace simulator

#endif
