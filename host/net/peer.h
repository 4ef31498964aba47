#ifndef MIRN_HOST_NET_PEER_H
#define MIRN_HOST_NET_PEER_H

#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/ip/tcp.hpp>

#include "http/request.h"
#include "identity/client.h"

namespace host {

/// Who is at the other end of `socket`, as the system tells it. An IPv4 address is told as such, also when it
/// came in by IPv6. Nothing is told of a client that has left already.
Client clientOf(const boost::asio::generic::stream_protocol::socket& socket);

/// `endpoint` as one of TCP. It has to be one.
boost::asio::ip::tcp::endpoint tcpEndpoint(const boost::asio::generic::stream_protocol::endpoint& endpoint);

/// Where the client at the other end of `socket` came in.
Destination destinationOf(const boost::asio::generic::stream_protocol::socket& socket);

}  // namespace host

#endif
