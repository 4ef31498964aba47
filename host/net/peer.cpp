#include "net/peer.h"

#include <algorithm>
#include <boost/asio/ip/tcp.hpp>
#include <cstring>
#include <optional>

#include "net/local_socket.h"

namespace host {

namespace {

namespace ip = boost::asio::ip;
using Socket = boost::asio::generic::stream_protocol::socket;
using Endpoint = boost::asio::generic::stream_protocol::endpoint;

/// Nothing when the endpoint is none of a network.
std::optional<ip::address> addressOf(const Endpoint& endpoint) {
  const int family = endpoint.protocol().family();
  if (family != ip::tcp::v4().family() && family != ip::tcp::v6().family()) return {};
  const ip::address address = tcpEndpoint(endpoint).address();
  const bool isMapped = address.is_v6() && address.to_v6().is_v4_mapped();
  if (!isMapped) return address;
  return ip::make_address_v4(ip::v4_mapped, address.to_v6());
}

/// As text, without the network interface that some IPv6 addresses bring along.
std::string textOf(const ip::address& address) {
  return address.is_v6() ? ip::address_v6(address.to_v6().to_bytes()).to_string() : address.to_string();
}

}  // namespace

ip::tcp::endpoint tcpEndpoint(const Endpoint& endpoint) {
  ip::tcp::endpoint known;
  std::memcpy(known.data(), endpoint.data(), std::min(endpoint.size(), known.capacity()));
  return known;
}

Client clientOf(const Socket& socket) {
  boost::system::error_code error;
  const auto address = addressOf(socket.remote_endpoint(error));
  Client client;
  client.localUser = localUserOf(socket);
  if (error || !address) return client;
  client.address = textOf(*address);
  client.isLoopback = address->is_loopback();
  return client;
}

Destination destinationOf(const Socket& socket) {
  boost::system::error_code error;
  const auto address = addressOf(socket.local_endpoint(error));
  if (error || !address) return {};
  return {textOf(*address), false};
}

}  // namespace host
