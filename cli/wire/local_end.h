#ifndef MIRN_CLI_WIRE_LOCAL_END_H
#define MIRN_CLI_WIRE_LOCAL_END_H

#include <boost/asio/generic/stream_protocol.hpp>
#include <string>

namespace mirnctl {

/// A Unix socket; one source a system. Raises `Failure` where there are none.
boost::asio::generic::stream_protocol::endpoint localEnd(const std::string& path);

}  // namespace mirnctl

#endif
