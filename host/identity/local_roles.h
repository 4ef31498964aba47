#ifndef MIRN_HOST_IDENTITY_LOCAL_ROLES_H
#define MIRN_HOST_IDENTITY_LOCAL_ROLES_H

#include <cstdint>
#include <optional>

#include "identity/client.h"
#include "identity/role.h"

namespace host {

/// What users of this machine may do who come over the Unix socket.
struct LocalRoles {
  std::uint32_t hostUser = 0;          ///< Administers, and so does root.
  std::optional<std::uint32_t> group;  ///< Its members operate.

  /// Nothing for a user who has no business here.
  std::optional<Role> roleOf(const Client::LocalUser& user) const;
};

/// Those of this process and of the group "mirn"; one source a system.
LocalRoles localRoles();

}  // namespace host

#endif
