#include "history/moment.h"

#include <gtest/gtest.h>

namespace insight {
namespace {

TEST(Moment, IsReadInMilliseconds) {
  EXPECT_EQ(momentOf("2026-11-22T01:05:00.250Z"), 1'795'309'500'250);
  EXPECT_EQ(momentOf("yesterday"), std::nullopt);
}

TEST(MomentForm, IsNullWhereThereIsNone) {
  EXPECT_EQ(momentForm({}), nullptr);
  EXPECT_EQ(momentForm(1'795'309'500'250), "2026-11-22T01:05:00.250Z");
}

}  // namespace
}  // namespace insight
