#ifndef MIRN_SIMULATOR_BUNDLE_TAR_H
#define MIRN_SIMULATOR_BUNDLE_TAR_H

#include <string_view>

#include "bundle/bundle_folder.h"

namespace simulator {

/// Takes the wanted files out of a tar archive: plain files under their names, perhaps with "./" in front.
/// Raises a `BundleError` for what is no such archive, for a wrong checksum and for a file that stands twice.
void readTar(std::string_view archive, BundleFiles& wanted);

}  // namespace simulator

#endif
