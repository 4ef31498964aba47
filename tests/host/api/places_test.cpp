#include "api/places.h"

#include <gtest/gtest.h>

namespace host {

namespace {

TEST(PlacesForWhatLasts, AreBoundedAndComeBack) {
  const auto places = std::make_shared<Places>(2);
  auto first = places->take();
  const auto second = places->take();
  ASSERT_TRUE(first);
  ASSERT_TRUE(second);
  EXPECT_FALSE(places->take());
  EXPECT_FALSE(places->take()) << "a refusal takes none";
  first.reset();
  EXPECT_TRUE(places->take());
}

TEST(PlacesForWhatLasts, OutliveWhoGivesThem) {
  auto places = std::make_shared<Places>(1);
  const auto place = places->take();
  places.reset();
  EXPECT_TRUE(place);
}

}  // namespace

}  // namespace host
