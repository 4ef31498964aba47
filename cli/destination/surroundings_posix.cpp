#include "destination/profile.h"
#include "process_start.h"

namespace mirnctl {

namespace fs = std::filesystem;

namespace {

fs::path below(const char* variable, const char* usual) {
  if (const auto folder = environmentVariable(variable)) return *folder;
  const auto home = environmentVariable("HOME");
  return home ? fs::path(*home) / usual : fs::path();
}

}  // namespace

Surroundings surroundings() {
  Surroundings found;
  found.host = environmentVariable("MIRN_HOST");
  found.tokenFile = environmentVariable("MIRN_TOKEN_FILE");
  const fs::path configuration = below("XDG_CONFIG_HOME", ".config");
  if (!configuration.empty()) found.configuration = configuration / "mirn" / "config";
  const fs::path state = below("XDG_STATE_HOME", ".local/state");
  if (!state.empty()) found.state = state / "mirn";
  if (const auto runtime = environmentVariable("XDG_RUNTIME_DIR"))
    found.userSocket = fs::path(*runtime) / "mirn" / kSocketFile;
  found.systemSocket = fs::path("/run/mirn") / kSocketFile;
  return found;
}

}  // namespace mirnctl
