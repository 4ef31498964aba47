#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "system/insight_story.h"

namespace host {

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

constexpr char kFreeSata[] = "TB2T7790315";

class HistoryStory : public InsightStory {
 protected:
  std::string smartAlarms() { return "?kind=alarm&text=disk-smart&objectId=" + idOf(kFreeSata); }

  /// Changes that leave something in the history: an alarm that is raised and cleared. What was over unseen
  /// would leave none.
  void smartEvent() {
    const std::size_t before = items("history" + smartAlarms()).size();
    befall("raise-smart-event", kFreeSata);
    awaitEntries(smartAlarms(), before + 1);
    done("PUT", ofDisk(kFreeSata, "resetsmart"));
    awaitEntries(smartAlarms(), before + 2);
  }

  std::vector<std::int64_t> rows(const std::string& query, std::size_t limit = 1000) {
    std::vector<std::int64_t> rows;
    for (const auto& each : items("history" + query, limit)) {
      rows.push_back(each.at("row").to_number<std::int64_t>());
    }
    return rows;
  }

  /// Waits until all of a change is kept.
  void awaitEntries(const std::string& query, std::size_t count) {
    EXPECT_TRUE(comesTo([&] { return items("history" + query).size() >= count; })) << query;
  }
};

TEST_F(HistoryStory, PagesGoOnWhereTheyWereWhileMoreComes) {
  begin();
  smartEvent();
  const std::vector<std::int64_t> before = rows("");
  ASSERT_GT(before.size(), 8u);
  std::vector<std::int64_t> found;
  std::string next;
  do {
    const boost::json::object page = answer("history?limit=3" + (next.empty() ? "" : "&cursor=" + next));
    for (const auto& each : page.at("items").as_array()) {
      found.push_back(each.at("row").to_number<std::int64_t>());
    }
    smartEvent();  // what comes meanwhile
    next = page.at("next").is_null() ? std::string() : text(page, "next");
  } while (!next.empty());
  EXPECT_EQ(found, before) << "the first page was as the whole was then";
  EXPECT_TRUE(std::is_sorted(found.rbegin(), found.rend()));
}

TEST_F(HistoryStory, EachParameterPicksOutItsOwn) {
  begin();
  smartEvent();
  const std::string id = idOf(kFreeSata);
  const auto wordsOf = [&](const std::string& query, const char* key) {
    std::set<std::string> words;
    for (const auto& each : items("history" + query)) words.insert(text(each.as_object(), key));
    return words;
  };
  EXPECT_THAT(wordsOf("", "kind"), testing::IsSupersetOf({"alarm", "audit", "event"}));
  for (const char* const kind : {"alarm", "audit", "event"}) {
    EXPECT_THAT(wordsOf(std::string("?kind=") + kind, "kind"), ElementsAre(kind));
  }
  EXPECT_THAT(wordsOf("?severity=critical", "severity"), ElementsAre("critical"));
  EXPECT_THAT(wordsOf("?actor=first", "actor"), ElementsAre("first"));
  EXPECT_THAT(wordsOf("?kind=audit&text=resetDisk", "operation"), ElementsAre("resetDiskSmart"));
  EXPECT_THAT(wordsOf("?kind=audit&text=resetDisk", "outcome"), ElementsAre("begun", "done"));
  for (const auto& each : items("history?objectType=disk&objectId=" + id)) {
    EXPECT_EQ(each.at("object").at("type"), "disk");
    EXPECT_EQ(text(each.at("object").as_object(), "id"), id);
    EXPECT_EQ(text(each.at("object").as_object(), "name"), std::string("SATA ") + kFreeSata);
  }
  EXPECT_THAT(rows("?actor=nobody"), IsEmpty());
  EXPECT_THAT(rows("?text=%25"), IsEmpty()) << "a sign of patterns is one like any other";
}

TEST_F(HistoryStory, TimesBoundWhatIsTold) {
  begin();
  const boost::json::array all = items("history");
  ASSERT_GT(all.size(), 2u);
  const std::string oldest = text(all.back().as_object(), "at");
  EXPECT_EQ(rows("?from=" + oldest).size(), all.size());
  EXPECT_THAT(rows("?to=" + oldest), IsEmpty()) << "what happened then is not before it";
  EXPECT_THAT(rows("?from=2999-01-01T00:00:00Z"), IsEmpty());
  EXPECT_EQ(rows("?from=1970-01-02T00:00:00Z&to=2999-01-01T00:00:00Z").size(), all.size());
}

TEST_F(HistoryStory, WhatMakesNoSenseIsA400WithWords) {
  begin();
  const std::pair<const char*, const char*> kRows[]{
      {"from=yesterday", "The parameter \"from\" is no moment such as 2026-11-22T01:05:00Z"},
      {"to=", "The parameter \"to\" is empty"},
      {"from=2026-11-22T01:05:01Z&to=2026-11-22T01:05:00Z", "The parameter \"from\" lies behind \"to\""},
      {"kind=gossip", "The parameter \"kind\" is none of event, job, alarm, audit, service"},
      {"severity=bad", "The parameter \"severity\" is none of ok, info, warning, unknown, critical"},
      {"objectType=engine",
       "The parameter \"objectType\" is none of volume, disk, array, controller, port, service"},
      {"objectId=", "The parameter \"objectId\" is empty"},
      {"actor=", "The parameter \"actor\" is empty"},
      {"text=", "The parameter \"text\" is empty"},
      {"limit=1001", "The limit is no number from 1 to 1000"},
      {"limit=-1", "The limit is no number from 1 to 1000"},
      {"cursor=c5", "The cursor is none that a page told"},
      {"cursor=e", "The cursor is none that a page told"},
      {"colour=red", "The parameter \"colour\" is none of this path"}};
  for (const auto& [query, words] : kRows) {
    const Reply reply = get(std::string("history?") + query);
    EXPECT_EQ(reply.status, 400u) << query << ": " << reply.body;
    EXPECT_EQ(text(reply.body.as_object(), "detail"), words) << query;
  }
}

TEST_F(HistoryStory, WhereNoneIsKeptWhatIsNowIsToldAllTheSame) {
  begin("", {"--history", "off"});
  for (const char* const target :
       {"history", "jobs?state=ended", "jobs/statistics", "alarms?state=cleared"}) {
    const Reply reply = get(target);
    EXPECT_EQ(reply.status, 422u) << target;
    EXPECT_EQ(text(reply.body.as_object(), "detail"), "No history is kept") << target;
  }
  EXPECT_THAT(alarms(), Contains("volume-degraded of Archive"));
  EXPECT_THAT(jobs(), IsEmpty());
  EXPECT_EQ(get("jobs/0-1").status, 404u);
  EXPECT_EQ(get("alarms/disk-failed-0").status, 404u);
  befall("fail-disk", "QV48021000A7");
  EXPECT_EQ(onlyJob("running").at("kind"), "rebuild");
  const std::string id = text(alarm("volume-degraded of System"), "id");
  EXPECT_EQ(done("POST", "alarms/" + id + "/acknowledge").at("acknowledged").at("by"), "first");
}

}  // namespace

}  // namespace host
