#include "commands/service_command.h"

namespace host {

int runServiceCommand(const std::vector<std::string>&, const std::function<int(const Options&)>&,
                      std::ostream&) {
  throw UsageError(
      "\"service\" is unknown: services are systemd's affair here; its unit is mirn-host.service");
}

}  // namespace host
