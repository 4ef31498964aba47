#ifndef MIRN_HOST_NET_HANDED_SOCKETS_H
#define MIRN_HOST_NET_HANDED_SOCKETS_H

#include <boost/asio/basic_socket_acceptor.hpp>
#include <boost/asio/generic/stream_protocol.hpp>
#include <optional>
#include <string>

namespace host {

/// A socket that listens already when the host starts. Whoever made it has a descriptor of its own: it goes
/// on taking clients into its queue when the host is gone.
struct HandedSocket {
  using Protocol = boost::asio::generic::stream_protocol;

  boost::asio::basic_socket_acceptor<Protocol>::native_handle_type handle;  ///< Of whoever listens on it.
  Protocol::endpoint endpoint;
  std::string path;  ///< Of a Unix socket, "@NAME" where it stands in no folder; empty otherwise.
};

/// What takes the place of the host's own sockets, told apart by the family of their addresses.
struct HandedSockets {
  std::optional<HandedSocket> network;
  std::optional<HandedSocket> local;
};

/// What the system's service manager listens at for this process; nothing where it does not. One source a
/// system. No child inherits them or is told of them. To be called once, and before there are other threads:
/// it changes the environment. Raises `UsageError` when there is anything that the host does not serve on.
HandedSockets takeHandedSockets();

}  // namespace host

#endif
