#ifndef MIRN_HOST_IDENTITY_ROLE_H
#define MIRN_HOST_IDENTITY_ROLE_H

#include <optional>
#include <string_view>

namespace host {

/// What somebody may do; each role may what those before it may.
enum class Role { kObserve, kOperate, kAdminister };

/// "observe", "operate" or "administer".
const char* toText(Role role);

/// The role of that name, if there is one.
std::optional<Role> roleOf(std::string_view name);

}  // namespace host

#endif
