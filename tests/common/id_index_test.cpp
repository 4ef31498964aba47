#include "id_index.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/named.h"

namespace {

TEST(IdIndex, FindsNothingInAnEmptyList) {
  const std::vector<Named> objects;
  const IdIndex index(objects);
  EXPECT_EQ(index.find(L""), nullptr);
  EXPECT_EQ(index.find(L"1"), nullptr);
}

TEST(IdIndex, FindsEachOfManyAndNoOther) {
  for (const int count : {1, 2, 3, 1000}) {
    std::vector<Named> objects;
    for (int i = 0; i < count; ++i) objects.emplace_back(std::to_wstring(1000000 + i));
    const IdIndex index(objects);
    for (const Named& object : objects) ASSERT_EQ(index.find(object.id()), &object) << count;
    for (int i = 0; i < 2000; ++i) ASSERT_EQ(index.find(std::to_wstring(i)), nullptr) << count;
  }
}

TEST(IdIndex, FindsTheFirstOfSeveralWithOneId) {
  const std::vector<Named> objects = {Named(L"1"), Named(L"2"), Named(L"1"), Named(L""), Named(L"")};
  const IdIndex index(objects);
  EXPECT_EQ(index.find(L"1"), &objects[0]);
  EXPECT_EQ(index.find(L"2"), &objects[1]);
  EXPECT_EQ(index.find(L""), &objects[3]);
}

TEST(IdIndex, TellsIdsApartThatBeginOrEndAlike) {
  const std::vector<Named> objects = {Named(L"10"), Named(L"1"), Named(L"01"), Named(L"1 "),
                                      Named(L"\x0131")};
  const IdIndex index(objects);
  for (const Named& object : objects) EXPECT_EQ(index.find(object.id()), &object);
  EXPECT_EQ(index.find(L"0"), nullptr);
}

}  // namespace
