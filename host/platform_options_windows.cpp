#include "platform_options.h"

namespace host {

void addPlatformOptions(boost::program_options::options_description&, Options&) {}

std::string whyMissing(const std::string& option) {
  if (option == "--unix-socket") return ": there is no Unix socket on Windows";
  if (option.rfind("--tls-", 0) == 0) return ": there is no TLS on Windows";
  return {};
}

}  // namespace host
