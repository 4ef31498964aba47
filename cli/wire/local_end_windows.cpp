#include "exit_status.h"
#include "wire/local_end.h"

namespace mirnctl {

boost::asio::generic::stream_protocol::endpoint localEnd(const std::string& path) {
  throw Failure(ExitStatus::kUsage, "unix:" + path + ": no service has a Unix socket on Windows",
                "say --host http://HOST:PORT");
}

}  // namespace mirnctl
