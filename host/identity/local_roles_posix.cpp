#include <grp.h>
#include <unistd.h>

#include "identity/local_roles.h"

namespace host {

namespace {

constexpr char kOperators[] = "mirn";

}  // namespace

LocalRoles localRoles() {
  LocalRoles roles;
  roles.hostUser = ::geteuid();
  // At the start, from one thread.
  if (const group* const operators = ::getgrnam(kOperators)) roles.group = operators->gr_gid;
  return roles;
}

}  // namespace host
