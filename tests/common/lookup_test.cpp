#include "lookup.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

const std::map<int, std::string> kOneWay = {{1, "one"}, {2, "two"}};
const auto kTwoWay = makeTwoWayTable<int, std::string>({{1, "one"}, {2, "two"}});

void expectMiss(const std::function<void()>& lookup, const char* words) {
  try {
    lookup();
    FAIL() << "found";
  } catch (const std::out_of_range& error) {
    EXPECT_STREQ(error.what(), words);
  }
}

TEST(LookUp, FindsInMapsAndOnBothSidesOfBimaps) {
  EXPECT_EQ(lookUp(kOneWay, 2), "two");
  EXPECT_EQ(lookUp(kTwoWay.left, 2), "two");
  EXPECT_EQ(lookUp(kTwoWay.right, std::string("two")), 2);
}

TEST(LookUp, RaisesAMissingKeyOfAMap) {
  expectMiss([] { lookUp(kOneWay, 3); }, "invalid map<K, T> key");
}

TEST(LookUp, RaisesAMissingKeyOfABimap) {
  expectMiss([] { lookUp(kTwoWay.left, 3); }, "bimap<>: invalid key");
  expectMiss([] { lookUp(kTwoWay.right, std::string("three")); }, "bimap<>: invalid key");
}

TEST(LookUpOr, GivesTheFallbackForAMissingKeyOnly) {
  EXPECT_EQ(lookUpOr(kOneWay, 1, "none"), "one");
  EXPECT_EQ(lookUpOr(kOneWay, 3, "none"), "none");
  EXPECT_EQ(lookUpOr(kTwoWay.right, std::string("two"), 0), 2);
  EXPECT_EQ(lookUpOr(kTwoWay.right, std::string("three"), 0), 0);
}

}  // namespace
