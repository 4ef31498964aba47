#include "commands/top.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "commands/what_if.h"
#include "exit_status.h"

namespace {

using Lines = std::vector<std::string>;

mirnctl::Overview overview() {
  mirnctl::Overview overview;
  overview.place = "http://server";
  overview.health =
      boost::json::parse(R"({"severity": "critical", "takenAt": "2026-11-22T19:47:05.676Z", "causes": [
      {"severity": "critical", "text": "One."}, {"severity": "warning", "text": "Two."}, {"severity": "info", "text": "Three."},
      {"severity": "info", "text": "Four."}]})");
  overview.jobs =
      boost::json::parse(R"({"items": [{"kind": "rebuild", "object": {"name": "System"}, "percent": 50,
      "percentPerHour": 10.2, "timeLeftSeconds": 18000}], "next": null})");
  overview.history = boost::json::parse(R"({"items": [
      {"at": "2026-11-22T19:47:05.676Z", "kind": "event", "details": {"description": "A"}, "outcome": null},
      {"at": "2026-11-22T19:47:04.676Z", "kind": "event", "details": {"description": "B"}, "outcome": null}], "next": null})");
  return overview;
}

TEST(Top, TellsAllWhereThereIsRoom) {
  EXPECT_EQ(
      (Lines{"critical  http://server  2026-11-22 19:47:05Z  (q ends)", "", "What is wrong",
             "  critical  One.", "  warning  Two.", "  info  Three.", "  info  Four.", "", "Work under way",
             "  rebuild of System [##########..........] 50 %, 10 % an hour, 5 h 0 min left", "", "Latest",
             "  2026-11-22 19:47:05Z  event  A ", "  2026-11-22 19:47:04Z  event  B "}),
      linesOf(overview(), 24, {80, false}));
}

TEST(Top, CountsWhatHasNoRoom) {
  EXPECT_EQ((Lines{"critical  http://serve…", "", "What is wrong", "  critical  One.", "  … and 3 more", "",
                   "Work under way", "  rebuild of System [#…", "", "Latest", "  … and 2 more"}),
            linesOf(overview(), 11, {23, false}));
}

TEST(Top, FitsAnyScreen) {
  for (std::size_t height = 1; height < 30; ++height) {
    EXPECT_LE(linesOf(overview(), height, {9, true}).size(), height);
  }
}

TEST(Top, TellsWhyNothingNewerIsKnown) {
  mirnctl::Overview old = overview();
  old.trouble = "http://server: no answer in time";
  const Lines lines = linesOf(old, 24, {80, false});
  EXPECT_EQ("unknown  http://server  2026-11-22 19:47:05Z  (q ends)", lines[0]);
  EXPECT_EQ(old.trouble, lines[1]);
}

TEST(WhatIf, TakesTimesWithUnits) {
  EXPECT_EQ(90, mirnctl::secondsOf("90"));
  EXPECT_EQ(90, mirnctl::secondsOf("90s"));
  EXPECT_EQ(900, mirnctl::secondsOf("15m"));
  EXPECT_EQ(7200, mirnctl::secondsOf("2h"));
  EXPECT_EQ(604800, mirnctl::secondsOf("7d"));
  for (const char* text : {"", "h", "2x", "-1", "2 h", "9999999999"}) {
    EXPECT_THROW(mirnctl::secondsOf(text), mirnctl::Failure) << text;
  }
}

}  // namespace
