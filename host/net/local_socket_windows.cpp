#include <stdexcept>

#include "net/local_socket.h"

namespace host {

std::string defaultSocketPath(const std::string&) { return {}; }

std::unique_ptr<Acceptor> listenLocally(boost::asio::io_context&, const std::string&, Acceptor::MakeStream) {
  throw std::runtime_error("there is no Unix socket on Windows");
}

void removeLocalSocket(const std::string&) {}

std::optional<Client::LocalUser> localUserOf(const ClientSocket&) { return {}; }

}  // namespace host
