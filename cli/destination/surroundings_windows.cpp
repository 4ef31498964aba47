#include "destination/profile.h"
#include "process_start.h"

namespace mirnctl {

namespace {

/// Below a folder of the user, where the environment names one.
std::filesystem::path below(const char* variable) {
  const auto folder = environmentVariable(variable);
  return folder ? std::filesystem::u8path(*folder) / "mirn" : std::filesystem::path();
}

}  // namespace

/// A host has no Unix socket there.
Surroundings surroundings() {
  Surroundings found;
  found.host = environmentVariable("MIRN_HOST");
  found.tokenFile = environmentVariable("MIRN_TOKEN_FILE");
  const std::filesystem::path configuration = below("APPDATA");
  if (!configuration.empty()) found.configuration = configuration / "config";
  found.state = below("LOCALAPPDATA");
  return found;
}

}  // namespace mirnctl
