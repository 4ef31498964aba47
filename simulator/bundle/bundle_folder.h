#ifndef MIRN_SIMULATOR_BUNDLE_BUNDLE_FOLDER_H
#define MIRN_SIMULATOR_BUNDLE_BUNDLE_FOLDER_H

#include <cstddef>
#include <map>
#include <optional>
#include <string>

namespace simulator {

/// Files that are wanted by their paths in the bundle, and what was found there.
using BundleFiles = std::map<std::string, std::optional<std::string>>;

/// More of a bundle, packed or unpacked, is not read.
constexpr std::size_t kMostPackedBytes = std::size_t{64} << 20;
constexpr std::size_t kMostUnpackedBytes = std::size_t{512} << 20;

/// The wanted files below a folder. Raises a `BundleError` for one that cannot be read or is too large.
void readFolder(const std::string& folder, BundleFiles& wanted);

/// The bytes of a packed bundle. Raises a `BundleError` likewise.
std::string readPacked(const std::string& path);

}  // namespace simulator

#endif
