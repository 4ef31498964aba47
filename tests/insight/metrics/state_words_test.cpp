#include "metrics/state_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace insight {
namespace {

using ovra::data_transfer::ServiceObject;
using testing::ElementsAre;

ServiceObject describedDisk() {
  ServiceObject description;
  ServiceObject& words = description.member(L"schemas")
                             .member(L"EndDevice")
                             .member(L"properties")
                             .member(L"state")
                             .member(L"enum");
  words = ServiceObject::array();
  words.at(0) = std::wstring(L"OFFLINE");
  words.at(1) = std::wstring(L"UNKNOWN");
  words.at(2) = std::wstring(L"NORMAL");
  return description;
}

TEST(StateWords, AreThoseOfTheDescriptionAndUnknown) {
  const MachineWords words = machineWordsOf(describedDisk());
  EXPECT_THAT(words.disk.all(), ElementsAre("OFFLINE", "NORMAL", "unknown"));
  EXPECT_THAT(words.volume.all(), ElementsAre("unknown"));
}

struct PlaceCase {
  const wchar_t* word;
  std::size_t place;
};

class PlaceOfWord : public testing::TestWithParam<PlaceCase> {};

TEST_P(PlaceOfWord, IsTheLastForWhatIsNone) {
  EXPECT_EQ(machineWordsOf(describedDisk()).disk.placeOf(GetParam().word), GetParam().place);
}

INSTANTIATE_TEST_SUITE_P(Words, PlaceOfWord,
                         testing::Values(PlaceCase{L"OFFLINE", 0}, PlaceCase{L"NORMAL", 1},
                                         PlaceCase{L"UNKNOWN", 2}, PlaceCase{L"unknown", 2},
                                         PlaceCase{L"", 2}, PlaceCase{L"NORMALER", 2}, PlaceCase{L"NORMA", 2},
                                         PlaceCase{L"\xD83D\xDE00", 2}));

}  // namespace
}  // namespace insight
