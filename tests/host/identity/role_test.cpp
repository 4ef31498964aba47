#include "identity/role.h"

#include <gtest/gtest.h>

namespace host {
namespace {

TEST(RoleTest, IsReadAsItIsWritten) {
  EXPECT_EQ(roleOf("observe"), Role::kObserve);
  EXPECT_EQ(roleOf("operate"), Role::kOperate);
  EXPECT_EQ(roleOf("administer"), Role::kAdminister);
  EXPECT_STREQ(toText(Role::kObserve), "observe");
  EXPECT_STREQ(toText(Role::kOperate), "operate");
  EXPECT_STREQ(toText(Role::kAdminister), "administer");
}

TEST(RoleTest, HasNoOtherNames) {
  for (const char* const name : {"", "Observe", "operate ", "administrator", "root"}) {
    EXPECT_FALSE(roleOf(name)) << name;
  }
}

TEST(RoleTest, RisesFromWatchingToAdministering) {
  EXPECT_LT(Role::kObserve, Role::kOperate);
  EXPECT_LT(Role::kOperate, Role::kAdminister);
}

}  // namespace
}  // namespace host
