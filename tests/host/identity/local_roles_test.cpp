#include "identity/local_roles.h"

#include <gtest/gtest.h>

#include "support/by_name.h"

namespace host {

namespace {

struct UserRow {
  std::string name;
  Client::LocalUser user;
  std::optional<std::uint32_t> group;
  std::optional<Role> role;
};

class LocalRolesTest : public testing::TestWithParam<UserRow> {};

TEST_P(LocalRolesTest, SayWhatAUserMayDo) {
  EXPECT_EQ((LocalRoles{500, GetParam().group}.roleOf(GetParam().user)), GetParam().role);
}

INSTANTIATE_TEST_SUITE_P(
    Users, LocalRolesTest,
    testing::Values(UserRow{"Root", {0, 0}, 70, Role::kAdminister},
                    UserRow{"TheHostsOwn", {500, 500}, 70, Role::kAdminister},
                    UserRow{"TheHostsOwnWithoutTheGroup", {500, 500}, {}, Role::kAdminister},
                    UserRow{"OfTheGroup", {501, 70}, 70, Role::kOperate},
                    UserRow{"AlsoOfTheGroup", {501, 501, {4, 70, 90}}, 70, Role::kOperate},
                    UserRow{"OfAnotherGroup", {501, 501, {4, 90}}, 70, {}},
                    UserRow{"WithoutTheGroup", {501, 70, {70}}, {}, {}},
                    UserRow{"OfRootsGroup", {501, 0, {0}}, {}, {}}),
    ByName());

}  // namespace

}  // namespace host
