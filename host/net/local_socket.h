#ifndef MIRN_HOST_NET_LOCAL_SOCKET_H
#define MIRN_HOST_NET_LOCAL_SOCKET_H

#include <memory>
#include <optional>
#include <string>

#include "identity/client.h"
#include "net/acceptor.h"

namespace host {

/// The Unix socket, where the system tells who is at the other end. One source a system; some systems have
/// none of it.

/// Where it is unless told otherwise: in the folder of the service or of the user's session; without them
/// beside `tokenFile`.
std::string defaultSocketPath(const std::string& tokenFile);

/// An acceptor at `path`, with its folder made where it is missing; takes the place of a socket that nobody
/// listens at. The host's user and the group of operators may connect. Raises `std::runtime_error` with the
/// reason, also when somebody listens there already.
std::unique_ptr<Acceptor> listenLocally(boost::asio::io_context& io, const std::string& path,
                                        Acceptor::MakeStream makeStream);

/// Takes the name away once nobody is to connect any more.
void removeLocalSocket(const std::string& path);

/// The user at the other end; nothing when `socket` is no Unix socket.
std::optional<Client::LocalUser> localUserOf(const ClientSocket& socket);

}  // namespace host

#endif
