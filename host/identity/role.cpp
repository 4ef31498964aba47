#include "identity/role.h"

#include <array>
#include <cstddef>
#include <utility>

namespace host {

namespace {

constexpr std::array<std::pair<Role, const char*>, 3> kRoles{
    {{Role::kObserve, "observe"}, {Role::kOperate, "operate"}, {Role::kAdminister, "administer"}}};

}  // namespace

const char* toText(Role role) { return kRoles.at(static_cast<std::size_t>(role)).second; }

std::optional<Role> roleOf(std::string_view name) {
  for (const auto& [role, text] : kRoles) {
    if (name == text) return role;
  }
  return {};
}

}  // namespace host
