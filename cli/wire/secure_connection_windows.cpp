#include "exit_status.h"
#include "wire/connection.h"

namespace mirnctl {

std::unique_ptr<Connection> secureConnection(const Destination& destination, std::chrono::seconds) {
  throw Failure(ExitStatus::kUsage, destination.url() + ": this program speaks no TLS on Windows",
                "say --host http://HOST:PORT, or ask from another system");
}

}  // namespace mirnctl
