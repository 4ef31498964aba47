#include "configuration/platform_options.h"

namespace host {

std::vector<Option> platformOptions() { return {}; }

std::string platformCommandHelp() {
  return "       mirn-host service install|remove .. (mirn-host service --help tells more)\n";
}

std::string whyMissing(const std::string& name) {
  if (name == "unix-socket") return ": there is no Unix socket on Windows";
  if (name.rfind("tls-", 0) == 0) return ": there is no TLS on Windows";
  return {};
}

}  // namespace host
