#include <cstdlib>
#include <optional>
#include <stdexcept>

#include "identity/token_file.h"

namespace host {

namespace {

std::optional<std::string> environment(const char* name) {
  const char* const value = std::getenv(name);
  if (!value || value[0] != '/') return {};
  return std::string(value);
}

}  // namespace

std::string defaultTokenFile() {
  if (const auto state = environment("XDG_STATE_HOME")) return *state + "/mirn/token";
  if (const auto home = environment("HOME")) return *home + "/.local/state/mirn/token";
  throw std::runtime_error("no home directory to keep the token in; name a file with --token-file");
}

std::string defaultTokenFileText() { return "mirn/token in $XDG_STATE_HOME or ~/.local/state"; }

}  // namespace host
