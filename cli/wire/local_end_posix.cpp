#include <boost/asio/local/stream_protocol.hpp>

#include "wire/local_end.h"

namespace mirnctl {

boost::asio::generic::stream_protocol::endpoint localEnd(const std::string& path) {
  return boost::asio::local::stream_protocol::endpoint(path);
}

}  // namespace mirnctl
