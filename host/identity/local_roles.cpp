#include "identity/local_roles.h"

#include <algorithm>

namespace host {

namespace {

constexpr std::uint32_t kRoot = 0;

}  // namespace

std::optional<Role> LocalRoles::roleOf(const Client::LocalUser& user) const {
  if (user.userId == kRoot || user.userId == hostUser) return Role::kAdminister;
  if (!group) return {};
  const auto& more = user.groups;
  const bool isMember = user.groupId == *group || std::find(more.begin(), more.end(), *group) != more.end();
  return isMember ? std::optional(Role::kOperate) : std::nullopt;
}

}  // namespace host
