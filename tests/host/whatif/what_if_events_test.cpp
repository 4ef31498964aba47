#include "whatif/what_if_events.h"

#include <gtest/gtest.h>
#include <boost/json/serialize.hpp>

#include <string>

#include "answers/answer.h"
#include "answers/problem.h"
#include "support/by_name.h"

namespace host {
namespace {

const auto kIsDisk = [](const std::wstring& id) { return id == L"7"; };

TEST(WhatIfEvents, AreTakenInTheirOrder) {
  const auto events = whatIfEventsIn(R"({"events": [{"fail": "7"}, {"wait": 60}, {"pull": "7"}]})", kIsDisk);
  EXPECT_EQ(boost::json::serialize(events), R"([{"fail":"7"},{"wait":60},{"pull":"7"}])");
}

TEST(WhatIfEvents, MayBeAsManyAsTold) {
  std::string list = R"({"wait": 0})";
  for (std::size_t i = 1; i < kMostWhatIfEvents; ++i) list += R"(, {"wait": 0})";
  EXPECT_EQ(whatIfEventsIn(R"({"events": [)" + list + "]}", kIsDisk).size(), kMostWhatIfEvents);
  EXPECT_THROW(whatIfEventsIn(R"({"events": [)" + list + R"(, {"wait": 0}]})", kIsDisk), Refusal);
}

struct BadBody {
  std::string name;
  std::string body;
  unsigned status;
  std::string words;
};

class BadWhatIfBodyTest : public testing::TestWithParam<BadBody> {};

TEST_P(BadWhatIfBodyTest, IsRefusedWithWords) {
  try {
    whatIfEventsIn(GetParam().body, kIsDisk);
    FAIL() << "it was taken";
  } catch (const Refusal& refusal) {
    EXPECT_EQ(problemOf(refusal).status, GetParam().status);
    EXPECT_NE(problemOf(refusal).detail.find(GetParam().words), std::string::npos)
        << problemOf(refusal).detail;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Bodies, BadWhatIfBodyTest,
    testing::Values(
        BadBody{"Nothing", "", 400, "the list \"events\""}, BadBody{"NoJson", "{", 400, ""},
        BadBody{"AList", "[]", 400, "the list \"events\""},
        BadBody{"NoEvents", "{}", 400, "the list \"events\""},
        BadBody{"MoreThanEvents", R"({"events": [{"wait": 1}], "more": 1})", 400, "the list \"events\""},
        BadBody{"NoList", R"({"events": {}})", 400, "the list \"events\""},
        BadBody{"Empty", R"({"events": []})", 400, "is empty"},
        BadBody{"AWord", R"({"events": ["fail"]})", 400, "one member"},
        BadBody{"TwoThings", R"({"events": [{"fail": "7", "wait": 1}]})", 400, "one member"},
        BadBody{"AnotherThing", R"({"events": [{"burn": "7"}]})", 400, "\"fail\", \"pull\" or \"wait\""},
        BadBody{"ANumberForADisk", R"({"events": [{"fail": 7}]})", 400, "the id of a disk"},
        BadBody{"AnUnknownDisk", R"({"events": [{"pull": "8"}]})", 404, "no disk 8"},
        BadBody{"TimeGoingBack", R"({"events": [{"wait": -1}]})", 400, "whole seconds"},
        BadBody{"HalfASecond", R"({"events": [{"wait": 0.5}]})", 400, "whole seconds"},
        BadBody{"AnAge", R"({"events": [{"wait": 316224001}]})", 400, "too long"}),
    ByName());

}  // namespace
}  // namespace host
