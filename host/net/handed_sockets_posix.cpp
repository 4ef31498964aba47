#include <sys/socket.h>
#include <systemd/sd-daemon.h>

#include <algorithm>
#include <boost/asio/local/stream_protocol.hpp>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>
#include <vector>

#include "net/handed_sockets.h"
#include "options.h"

namespace host {

namespace {

using Endpoint = HandedSocket::Protocol::endpoint;

std::string reason(int error) { return std::generic_category().message(error); }

/// The names of the sockets, whose descriptors follow each other. Closes them to children, and forgets them.
std::vector<std::string> takeNames() {
  constexpr int kForget = 1;
  char** names = nullptr;
  const int count = ::sd_listen_fds_with_names(kForget, &names);
  if (count < 0) {
    throw UsageError("the sockets of the service manager cannot be taken over: " + reason(-count));
  }
  std::vector<std::string> taken;
  for (int i = 0; i < count; ++i) {
    taken.emplace_back(names[i]);
    std::free(names[i]);
  }
  std::free(names);
  return taken;
}

Endpoint endpointOf(int descriptor, const std::string& what) {
  sockaddr_storage address{};
  socklen_t size = sizeof address;
  if (::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) == 0) return {&address, size};
  throw UsageError(what + ", which tells no address: " + reason(errno));
}

std::string pathOf(const Endpoint& endpoint) {
  boost::asio::local::stream_protocol::endpoint known;
  const std::size_t size = std::min(endpoint.size(), known.capacity());
  std::memcpy(known.data(), endpoint.data(), size);
  known.resize(size);  // looks at the end of what is there
  std::string path = known.path();
  if (!path.empty() && path.front() == '\0') path.front() = '@';
  return path;
}

void add(HandedSockets& sockets, int descriptor, const std::string& what) {
  constexpr int kListening = 1;
  if (::sd_is_socket(descriptor, AF_UNSPEC, SOCK_STREAM, kListening) <= 0) {
    throw UsageError(what + ", which is no listening stream socket");
  }
  const Endpoint endpoint = endpointOf(descriptor, what);
  const int family = endpoint.protocol().family();
  const bool isLocal = family == AF_UNIX;
  if (!isLocal && family != AF_INET && family != AF_INET6) {
    throw UsageError(what + ", which is neither a TCP nor a Unix socket");
  }
  auto& place = isLocal ? sockets.local : sockets.network;
  if (place) throw UsageError(what + ", which is a second " + (isLocal ? "Unix" : "TCP") + " socket");
  place = HandedSocket{descriptor, endpoint, isLocal ? pathOf(endpoint) : ""};
}

}  // namespace

HandedSockets takeHandedSockets() {
  HandedSockets sockets;
  int descriptor = SD_LISTEN_FDS_START;
  for (const std::string& name : takeNames()) {
    add(sockets, descriptor,
        "the service manager hands over \"" + name + "\" (descriptor " + std::to_string(descriptor) + ')');
    ++descriptor;
  }
  return sockets;
}

}  // namespace host
