#include "handle_list.h"

#include <gtest/gtest.h>

namespace vexl2 {
namespace {

const std::vector<Handle> kFound{5, 6, 7};

TEST(HandleList, IsStoredWhereItFits) {
  VEX_HANDLE handles[4] = {1, 1, 1, 1};
  std::uint32_t count = 4;
  storeHandles(kFound, handles, count);
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(std::vector<Handle>(handles, handles + 4), (std::vector<Handle>{5, 6, 7, 1}));
}

TEST(HandleList, TellsHowMuchRoomItNeeds) {
  VEX_HANDLE handles[4] = {1, 1, 1, 1};
  std::uint32_t count = 2;
  EXPECT_THROW(storeHandles(kFound, handles, count), Refusal);
  EXPECT_EQ(count, 3U);
  EXPECT_EQ(handles[0], 1U) << "nothing is stored";
  storeHandles(kFound, handles, count);
  EXPECT_EQ(handles[2], 7U);
}

TEST(HandleList, HasNoRoomWithoutAPlace) {
  std::uint32_t count = 9;
  EXPECT_THROW(storeHandles(kFound, nullptr, count), Refusal);
  EXPECT_EQ(count, 3U);
  storeHandles({}, nullptr, count);
  EXPECT_EQ(count, 0U);
}

TEST(HandleList, OfAnArgumentNeedsAPlaceForItsCount) {
  const VEX_HANDLE handles[2] = {8, 9};
  EXPECT_EQ(handlesOf(handles, 2), (std::vector<Handle>{8, 9}));
  EXPECT_TRUE(handlesOf(nullptr, 0).empty());
  EXPECT_THROW(handlesOf(nullptr, 1), Refusal);
}

}  // namespace
}  // namespace vexl2
