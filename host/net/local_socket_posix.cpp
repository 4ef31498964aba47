#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <boost/asio/local/stream_protocol.hpp>
#include <boost/system/system_error.hpp>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <utility>

#include "identity/local_roles.h"
#include "identity/private_text.h"
#include "net/local_socket.h"

namespace host {

namespace fs = std::filesystem;

namespace {

using LocalProtocol = boost::asio::local::stream_protocol;

constexpr char kServiceFolder[] = "/run/mirn";
constexpr char kName[] = "host.sock";
constexpr mode_t kForUserAndGroup = S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP;

bool isListenedAt(const std::string& path) {
  boost::asio::io_context io;
  LocalProtocol::socket socket(io);
  boost::system::error_code error;
  socket.connect(LocalProtocol::endpoint(path), error);
  return error != boost::asio::error::connection_refused;
}

void removeStale(const std::string& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) return;
  if (!S_ISSOCK(status.st_mode)) throw std::runtime_error("something else is there");
  if (isListenedAt(path)) throw std::runtime_error("somebody listens there already");
  ::unlink(path.c_str());
}

/// Before anybody can connect, which is from `listen` on.
void openToOperators(const std::string& path) {
  if (::chmod(path.c_str(), kForUserAndGroup) != 0) {
    throw boost::system::system_error(errno, boost::system::system_category());
  }
  // Who may not give it to the group serves its own user, and root.
  constexpr auto kSameUser = static_cast<uid_t>(-1);
  const auto group = localRoles().group;
  const bool isGiven = group && ::chown(path.c_str(), kSameUser, *group) == 0;
  static_cast<void>(isGiven);
}

std::vector<std::uint32_t> groupsOf(int socket) {
  std::vector<gid_t> groups;
  socklen_t size = 0;
  // The first call tells how many there are.
  if (::getsockopt(socket, SOL_SOCKET, SO_PEERGROUPS, nullptr, &size) != 0 && errno != ERANGE) return {};
  groups.resize(size / sizeof(gid_t));
  if (::getsockopt(socket, SOL_SOCKET, SO_PEERGROUPS, groups.data(), &size) != 0) return {};
  return {groups.begin(), groups.end()};
}

}  // namespace

std::string defaultSocketPath(const std::string& tokenFile) {
  const char* const session = std::getenv("XDG_RUNTIME_DIR");
  if (::access(kServiceFolder, W_OK) == 0) return (fs::path(kServiceFolder) / kName).string();
  if (session && session[0] == '/') return (fs::path(session) / "mirn" / kName).string();
  return (fs::path(tokenFile).parent_path() / kName).string();
}

std::unique_ptr<Acceptor> listenLocally(boost::asio::io_context& io, const std::string& path,
                                        Acceptor::MakeStream makeStream) {
  try {
    makeFolderOf(path);
    const LocalProtocol::endpoint endpoint(path);
    removeStale(path);
    return std::make_unique<Acceptor>(io, endpoint, std::move(makeStream), [&] { openToOperators(path); });
  } catch (const boost::system::system_error& error) {
    throw std::runtime_error("cannot listen on \"" + path + "\": " + error.code().message());
  } catch (const std::runtime_error& failure) {
    throw std::runtime_error("cannot listen on \"" + path + "\": " + failure.what());
  }
}

void removeLocalSocket(const std::string& path) { ::unlink(path.c_str()); }

std::optional<Client::LocalUser> localUserOf(const ClientSocket& socket) {
  boost::system::error_code error;
  if (socket.local_endpoint(error).protocol().family() != AF_UNIX || error) return {};
  // Asio asks for a changeable socket where the handle is only looked at.
  const int descriptor = const_cast<ClientSocket&>(socket).native_handle();
  ucred user{};
  socklen_t size = sizeof user;
  if (::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &user, &size) != 0) return {};
  return Client::LocalUser{user.uid, user.gid, groupsOf(descriptor)};
}

}  // namespace host
