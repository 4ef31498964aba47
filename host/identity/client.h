#ifndef MIRN_HOST_IDENTITY_CLIENT_H
#define MIRN_HOST_IDENTITY_CLIENT_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

/// Who is at the other end of a connection, as the system and the transport tell it. Nothing of it comes from
/// what the client says.
struct Client {
  /// The user at the other end of a Unix socket.
  struct LocalUser {
    std::uint32_t userId;
    std::uint32_t groupId;
    std::vector<std::uint32_t> groups{};  ///< The further ones that the user is in.
  };

  std::string address;                 ///< Of the network, without the port; empty on a Unix socket.
  bool isLoopback = false;             ///< It came over the loopback.
  bool isEncrypted = false;            ///< It came over TLS.
  std::optional<LocalUser> localUser;  ///< On a Unix socket only.
  std::string
      certificateSubject;  ///< Of the certificate that the client showed and we trust; otherwise empty.
};

}  // namespace host

#endif
