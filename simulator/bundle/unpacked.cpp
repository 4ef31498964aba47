#include "bundle/unpacked.h"

#include "archive.h"
#include "bundle/bundle_files.h"
#include "bundle/bundle_folder.h"

namespace simulator {

std::string unpacked(std::string_view gzip) {
  try {
    return unpackedGzip(gzip, kMostUnpackedBytes);
  } catch (const ArchiveError& error) {
    throw BundleError(std::string("the bundle ") + error.what());
  }
}

}  // namespace simulator
