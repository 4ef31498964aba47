#include "stream/stream.h"

#include <gmock/gmock.h>

#include <map>
#include <random>

#include "history/sqlite.h"
#include "insight/history/sample_entries.h"
#include "stream/frames.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kKept[] = "aaaaaaaaaaaaaaaa";
constexpr char kUnkept[] = "bbbbbbbbbbbbbbbb";

Entry entryAt(std::int64_t row, const std::string& kind = "event") {
  Entry entry = sampleEvent(static_cast<std::uint64_t>(row));
  entry.row = row;
  entry.kind = kind;
  return entry;
}

/// What has been kept, in memory.
class GivenPast : public StreamPast {
 public:
  std::string epoch() override { return currentEpoch; }
  std::int64_t oldestRow() override { return m_entries.empty() ? 0 : m_entries.begin()->first; }
  std::int64_t newestRow() override { return m_newest; }
  std::vector<Entry> entriesAfter(std::int64_t row, std::size_t limit) override {
    if (isBroken) throw sql::Failure(0, "cannot be read");
    std::vector<Entry> entries;
    for (auto each = m_entries.upper_bound(row); each != m_entries.end() && entries.size() < limit; ++each) {
      entries.push_back(each->second);
    }
    return entries;
  }

  void keep(const Entry& entry) {
    m_entries[entry.row] = entry;
    m_newest = entry.row;
  }
  void beginAnew(const std::string& epoch) {
    currentEpoch = epoch;
    m_entries.clear();
    m_newest = 0;
  }
  void pruneBelow(std::int64_t row) { m_entries.erase(m_entries.begin(), m_entries.lower_bound(row)); }

  bool isBroken = false;
  std::string currentEpoch = kKept;

 private:
  std::map<std::int64_t, Entry> m_entries;
  std::int64_t m_newest = 0;
};

/// "event 3", "gap 4-7", "revision", …: what a listener's bytes say; checks the form of each.
std::vector<std::string> readEvents(const std::string& bytes) {
  std::vector<std::string> events;
  std::size_t begin = 0;
  while (begin < bytes.size()) {
    const std::size_t end = bytes.find("\n\n", begin);
    EXPECT_NE(end, std::string::npos) << "not whole";
    if (end == std::string::npos) break;
    std::map<std::string, std::string> fields;
    std::string lines = bytes.substr(begin, end - begin) + '\n';
    for (std::size_t line = 0; line < lines.size();) {
      const std::size_t stop = lines.find('\n', line);
      const std::size_t colon = lines.find(": ", line);
      fields[lines.substr(line, colon - line)] = lines.substr(colon + 2, stop - colon - 2);
      line = stop + 1;
    }
    std::string words = fields["event"];
    const std::string& data = fields["data"];
    if (words == "gap") words += ' ' + data;
    if (fields.count("id") != 0 && words.substr(0, 3) != "gap") words += ' ' + fields["id"].substr(17);
    events.push_back(words);
    begin = end + 2;
  }
  return events;
}

class StreamTest : public testing::Test {
 protected:
  Stream::Settings settings() const {
    Stream::Settings settings;
    settings.held = 5;
    return settings;
  }

  /// As the history tells it: kept first.
  void tell(std::int64_t first, std::int64_t last) {
    for (std::int64_t row = first; row <= last; ++row) {
      m_past.keep(entryAt(row));
      m_stream.tell(kKept, entryAt(row));
    }
  }

  static std::vector<std::string> takeAll(Stream::Listener& listener) {
    std::vector<std::string> all;
    for (std::string bytes; !(bytes = listener.take(0)).empty();) {
      for (std::string& words : readEvents(bytes)) all.push_back(std::move(words));
    }
    return all;
  }

  std::vector<std::string> resumed(const std::string& id) {
    const auto listener = m_stream.listen(id, false, {});
    return takeAll(*listener);
  }

  GivenPast m_past;
  Stream m_stream{&m_past, settings()};
};

TEST_F(StreamTest, TellsWhatComesFromNowOn) {
  tell(1, 2);
  int woken = 0;
  const auto listener = m_stream.listen("", false, [&] { ++woken; });
  EXPECT_EQ(listener->take(0), "");
  tell(3, 3);
  EXPECT_EQ(woken, 1);
  EXPECT_EQ(listener->take(0), frames::ofEntry(kKept, entryAt(3)));
  EXPECT_EQ(listener->take(0), "");
  EXPECT_EQ(m_stream.listeners(), 1U);
}

TEST_F(StreamTest, GoesOnBehindAnEntryThatIsHeld) {
  tell(1, 8);
  EXPECT_THAT(resumed(std::string(kKept) + ".6"), ElementsAre("event 7", "event 8"));
  EXPECT_THAT(resumed(std::string(kKept) + ".3"),
              ElementsAre("event 4", "event 5", "event 6", "event 7", "event 8"));
  EXPECT_THAT(resumed(std::string(kKept) + ".8"), IsEmpty());
}

TEST_F(StreamTest, GoesOnInThePast) {
  tell(1, 1000);
  const auto events = resumed(std::string(kKept) + ".0");
  ASSERT_EQ(events.size(), 1000U);
  for (std::size_t i = 0; i < events.size(); ++i) EXPECT_EQ(events[i], "event " + std::to_string(i + 1));
}

TEST_F(StreamTest, NothingIsMissedBetweenThePastAndNow) {
  tell(1, 300);
  const auto listener = m_stream.listen(std::string(kKept) + ".50", false, {});
  std::vector<std::string> events = readEvents(listener->take(0));
  tell(301, 900);
  for (std::string& words : takeAll(*listener)) events.push_back(std::move(words));
  ASSERT_EQ(events.size(), 850U);
  EXPECT_EQ(events.front(), "event 51");
  EXPECT_EQ(events.back(), "event 900");
}

TEST_F(StreamTest, AfterARestartThePastAloneIsThere) {
  for (std::int64_t row = 1; row <= 20; ++row) m_past.keep(entryAt(row));
  const auto listener = m_stream.listen(std::string(kKept) + ".18", false, {});
  EXPECT_THAT(takeAll(*listener), ElementsAre("event 19", "event 20"));
  tell(21, 21);
  EXPECT_THAT(takeAll(*listener), ElementsAre("event 21"));
}

TEST_F(StreamTest, WhatWasPrunedIsAGap) {
  tell(1, 20);
  m_past.pruneBelow(11);
  const auto events = resumed(std::string(kKept) + ".3");
  ASSERT_EQ(events.size(), 11U);
  EXPECT_EQ(events.front(), R"(gap {"first":4,"last":10})");
  EXPECT_EQ(events.at(1), "event 11");
}

TEST_F(StreamTest, WhereAllHasGoneTheGapIsAllOfIt) {
  for (std::int64_t row = 1; row <= 20; ++row) m_past.keep(entryAt(row));
  m_past.pruneBelow(21);
  const auto listener = m_stream.listen(std::string(kKept) + ".3", false, {});
  EXPECT_THAT(takeAll(*listener), ElementsAre(R"(gap {"first":4,"last":20})"));
  tell(21, 21);
  EXPECT_THAT(takeAll(*listener), ElementsAre("event 21"));
}

TEST_F(StreamTest, WhatIsReadAheadOfBeingToldIsHeardOnce) {
  tell(1, 20);
  m_past.keep(entryAt(21));
  m_past.keep(entryAt(22));
  const auto listener = m_stream.listen(std::string(kKept) + ".14", false, {});
  const std::vector<std::string> events = takeAll(*listener);
  ASSERT_EQ(events.size(), 8U);
  EXPECT_EQ(events.back(), "event 22");
  EXPECT_FALSE(listener->isBehind());
  for (std::int64_t row = 21; row <= 22; ++row) m_stream.tell(kKept, entryAt(row));
  tell(23, 23);
  EXPECT_THAT(takeAll(*listener), ElementsAre("event 23"));
}

TEST_F(StreamTest, ARowThatIsToldAfterTheGapAheadOfItIsNotHeardAgain) {
  for (std::int64_t row = 1; row <= 4; ++row) m_past.keep(entryAt(row));
  const auto listener = m_stream.listen("x", false, {});
  m_stream.tell(kKept, entryAt(4));
  tell(5, 5);
  EXPECT_THAT(takeAll(*listener), ElementsAre(R"(gap {"first":1,"last":4})", "event 5"));
}

TEST_F(StreamTest, APastThatBeginsAnewIsAGap) {
  tell(1, 1000);
  const auto listener = m_stream.listen(std::string(kKept) + ".50", false, {});
  EXPECT_EQ(readEvents(listener->take(0)).front(), "event 51");
  m_past.beginAnew("dddddddddddddddd");
  for (std::int64_t row = 1; row <= 3; ++row) {
    m_past.keep(entryAt(row));
    m_stream.tell("dddddddddddddddd", entryAt(row));
  }
  EXPECT_THAT(takeAll(*listener), ElementsAre(R"(gap {"first":1,"last":3})"));
}

TEST_F(StreamTest, APastOfWhichNothingMayBeHeardIsReadOn) {
  for (std::int64_t row = 1; row <= 500; ++row) m_past.keep(entryAt(row, "audit"));
  const auto listener = m_stream.listen(std::string(kKept) + ".0", false, {});
  EXPECT_TRUE(listener->isBehind());
  int turns = 0;
  for (; listener->isBehind(); ++turns) EXPECT_EQ(listener->take(0), "");
  EXPECT_GT(turns, 2);
  tell(501, 501);
  EXPECT_THAT(takeAll(*listener), ElementsAre("event 501"));
}

TEST_F(StreamTest, AnUnknownIdIsAGapUpToNow) {
  tell(1, 20);
  m_past.pruneBelow(11);
  for (const char* const id : {"cccccccccccccccc.3", "aaaaaaaaaaaaaaaa.21", "x", "aaaaaaaaaaaaaaaa.-1"}) {
    EXPECT_THAT(resumed(id), ElementsAre(R"(gap {"first":11,"last":20})")) << id;
  }
  const auto listener = m_stream.listen("x", false, {});
  EXPECT_THAT(listener->take(0), HasSubstr("id: aaaaaaaaaaaaaaaa.20\n")) << "from where it goes on";
  tell(21, 21);
  EXPECT_THAT(takeAll(*listener), ElementsAre("event 21"));
}

TEST_F(StreamTest, APastThatCannotBeReadIsAGap) {
  tell(1, 20);
  m_past.isBroken = true;
  EXPECT_THAT(resumed(std::string(kKept) + ".3"), ElementsAre(R"(gap {"first":4,"last":20})"));
  EXPECT_THAT(resumed(std::string(kKept) + ".18"), ElementsAre("event 19", "event 20")) << "is held";
}

TEST_F(StreamTest, NumbersThatEndWithABadTimeLeadOn) {
  tell(1, 2);
  m_stream.tell(kUnkept, entryAt(1));
  m_stream.tell(kUnkept, entryAt(2));
  for (std::int64_t row = 3; row <= 4; ++row) m_past.keep(entryAt(row));  // the same two, kept since
  tell(5, 5);
  EXPECT_THAT(resumed(std::string(kUnkept) + ".1"), ElementsAre("event 2", "event 5"));
  EXPECT_THAT(resumed(std::string(kKept) + ".2"), ElementsAre("event 1", "event 2", "event 5"));
}

TEST(StreamWithoutHistory, HoldsARingAndAGap) {
  Stream::Settings settings;
  settings.held = 3;
  Stream stream(nullptr, settings);
  for (std::int64_t row = 1; row <= 5; ++row) stream.tell(kUnkept, entryAt(row));
  const auto held = stream.listen(std::string(kUnkept) + ".3", false, {});
  EXPECT_THAT(readEvents(held->take(0)), ElementsAre("event 4", "event 5"));
  const auto gone = stream.listen(std::string(kUnkept) + ".1", false, {});
  EXPECT_THAT(readEvents(gone->take(0)), ElementsAre(R"(gap {"first":1,"last":5})"));
  const auto earlier = stream.listen("cccccccccccccccc.9", false, {});
  EXPECT_THAT(readEvents(earlier->take(0)), ElementsAre(R"(gap {"first":1,"last":5})"));
}

TEST_F(StreamTest, WhatClientsDidIsForThoseWhoMay) {
  m_past.keep(entryAt(1, "audit"));
  m_stream.tell(kKept, entryAt(1, "audit"));
  tell(2, 2);
  const std::string start = std::string(kKept) + ".0";
  EXPECT_THAT(resumed(start), ElementsAre("event 2"));
  EXPECT_THAT(readEvents(m_stream.listen(start, true, {})->take(0)), ElementsAre("audit 1", "event 2"));
  tell(3, 10);
  EXPECT_EQ(resumed(start).front(), "event 2") << "in the past, too";
}

TEST_F(StreamTest, OneThatIsTooSlowIsClosedAndComesBack) {
  Stream::Settings small;
  small.longestQueue = 1000;
  Stream stream(&m_past, small);
  const auto slow = stream.listen("", false, {});
  const auto quick = stream.listen("", false, {});
  slow->take(0);
  quick->take(0);
  std::string heard;
  for (std::int64_t row = 1; row <= 20; ++row) {
    m_past.keep(entryAt(row));
    stream.tell(kKept, entryAt(row));
    heard += quick->take(0);
  }
  EXPECT_TRUE(slow->isClosed());
  EXPECT_EQ(slow->take(0), "");
  EXPECT_FALSE(quick->isClosed());
  EXPECT_EQ(readEvents(heard).size(), 20U);
  EXPECT_EQ(readEvents(stream.listen(std::string(kKept) + ".0", false, {})->take(0)).size(), 20U)
      << "on the way here nobody is too slow";
}

TEST_F(StreamTest, HeartbeatsComeWhenNothingElseDoes) {
  const auto listener = m_stream.listen("", false, {});
  EXPECT_EQ(listener->take(1000), "");
  EXPECT_EQ(listener->take(15'999), "");
  EXPECT_EQ(listener->take(16'000), "event: heartbeat\ndata: {}\n\n");
  EXPECT_EQ(listener->take(16'001), "");
  tell(1, 1);
  EXPECT_NE(listener->take(20'000), "");
  EXPECT_EQ(listener->take(34'999), "");
  EXPECT_EQ(listener->take(35'000), frames::ofHeartbeat());
}

TEST_F(StreamTest, OfPositionsTheLastIsHeard) {
  m_stream.tellPosition({{"revision", 1}});
  const auto listener = m_stream.listen("", false, {});
  EXPECT_EQ(listener->take(0), "") << "of before";
  m_stream.tellPosition({{"revision", 2}});
  m_stream.tellPosition({{"revision", 3}});
  EXPECT_EQ(listener->take(0), "event: revision\ndata: {\"revision\":3}\n\n");
  EXPECT_EQ(listener->take(0), "");
}

TEST_F(StreamTest, TheStopIsTheLastWord) {
  tell(1, 1000);
  const auto there = m_stream.listen("", false, {});
  const auto onItsWay = m_stream.listen(std::string(kKept) + ".1", false, {});
  int woken = 0;
  const auto waiting = m_stream.listen("", false, [&] { ++woken; });
  m_stream.stop();
  EXPECT_EQ(woken, 1);
  for (Stream::Listener* const listener : {there.get(), onItsWay.get(), waiting.get()}) {
    EXPECT_EQ(listener->take(0), "retry: 1000\nevent: bye\ndata: {}\n\n");
    EXPECT_TRUE(listener->isClosed());
    EXPECT_EQ(listener->take(100'000), "");
  }
}

TEST_F(StreamTest, CutsAnywhereLoseNothingSilently) {
  std::mt19937 random(7);
  std::int64_t told = 0;
  std::int64_t heard = 0;
  std::string lastId = std::string(kKept) + ".0";
  for (int cut = 0; cut < 300; ++cut) {
    const auto listener = m_stream.listen(lastId, false, {});
    tell(told + 1, told + static_cast<std::int64_t>(random() % 12));
    told = m_past.newestRow();
    if (random() % 20 == 0) m_past.pruneBelow(told - static_cast<std::int64_t>(random() % 8));
    std::string bytes = listener->take(0);
    bytes.resize(random() % (bytes.size() + 1));
    bytes.resize(bytes.rfind("\n\n") == std::string::npos ? 0 : bytes.rfind("\n\n") + 2);
    for (const std::string& words : readEvents(bytes)) {
      long long first = 0;
      long long last = 0;
      if (std::sscanf(words.c_str(), "gap {\"first\":%lld,\"last\":%lld}", &first, &last) == 2) {
        ASSERT_EQ(first, heard + 1);
        heard = last;
      } else {
        ASSERT_EQ(words, "event " + std::to_string(heard + 1));
        ++heard;
      }
    }
    lastId = std::string(kKept) + '.' + std::to_string(heard);
  }
  EXPECT_GT(heard, 100);
}

TEST(StreamIds, AreReadStrictly) {
  EXPECT_EQ(streamIdOf("0123456789abcdef.12"), (StreamId{"0123456789abcdef", 12}));
  for (const char* const text : {"", "0123456789abcdef", "0123456789abcdef.", "0123456789ABCDEF.1", "123.4",
                                 "0123456789abcdef.1234567890123456789", "0123456789abcdef.1 "}) {
    EXPECT_FALSE(streamIdOf(text)) << text;
  }
}

TEST(Frames, AnEntryIsOneLineOfData) {
  Entry entry = entryAt(3);
  entry.body["text"] = "two\nlines";
  const std::string frame = frames::ofEntry(kKept, entry);
  EXPECT_THAT(frame, testing::StartsWith("id: aaaaaaaaaaaaaaaa.3\nevent: event\ndata: {"));
  EXPECT_EQ(std::count(frame.begin(), frame.end(), '\n'), 4);
}

}  // namespace
}  // namespace insight
