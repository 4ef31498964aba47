#include "array.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

using Lines = std::vector<std::string>;

TEST(PublishedArray, HasEveryKeyAndNoOther) {
  Array array = complete<Array>().build();
  array.setControllerIds({L"11", L"12"});
  EXPECT_EQ(linesOf(array.toServiceObject()), (Lines{
                                                  "controllerIds[0] = \"11\"",
                                                  "controllerIds[1] = \"12\"",
                                                  "freeSize = \"1000\"",
                                                  "id = \"21\"",
                                                  "name = \"Array_0\"",
                                                  "numDisks = 3",
                                                  "numVolumes = 1",
                                                  "state = \"NORMAL\"",
                                                  "totalSize = \"3000\"",
                                                  "writeCachePolicy = \"ON\"",
                                              }));
}

TEST(PublishedArray, HasAnEmptyListBeforeItIsLinked) {
  const auto form = complete<Array>().build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"controllerIds")), Lines{"[]"});
}

TEST(PublishedArray, KeepsSizesThatADoubleCannotHold) {
  const auto form = complete<Array>()
                        .totalSize(9007199254740993U)
                        .freeSize(18446744073709551615U)
                        .build()
                        .toServiceObject();
  EXPECT_EQ(form.member(L"totalSize").toString(), L"9007199254740993");
  EXPECT_EQ(form.member(L"freeSize").toString(), L"18446744073709551615");
}

}  // namespace
