#include "bundle/tar.h"

#include "archive.h"
#include "bundle/bundle_files.h"

namespace simulator {

void readTar(std::string_view archive, BundleFiles& wanted) {
  const auto take = [&wanted](const std::string& name, std::string_view bytes) {
    const auto found = wanted.find(name);
    if (found == wanted.end()) return;
    if (found->second) throw BundleError("the bundle has " + name + " twice");
    found->second = std::string(bytes);
  };
  try {
    forEachFile(archive, take);
  } catch (const ArchiveError& error) {
    throw BundleError(std::string("the bundle ") + error.what());
  }
}

}  // namespace simulator
