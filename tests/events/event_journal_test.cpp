#include "event_journal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "events/sample_objects.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Journal : public testing::Test {
 protected:
  /// Records an event of the volume called `name`, now.
  void record(const std::wstring& name) {
    m_journal.add(std::make_shared<mirn_events::volume_event>(
        EventSeverity::INFO, VolumeEventType::VOLUME_ADDED, sampleVolume(L"1", VolumeState::NORMAL, name)));
  }

  std::vector<std::wstring> namesOf(std::uint64_t seconds) const {
    std::vector<std::wstring> names;
    for (const auto& event : m_journal.getRecent(seconds)) {
      names.push_back(std::dynamic_pointer_cast<mirn_events::volume_event>(event)->volume().name());
    }
    return names;
  }

  void passSeconds(std::int64_t seconds) { m_now += seconds * kTicksPerSecond; }

  static constexpr auto kForever = std::numeric_limits<std::uint64_t>::max();

  std::int64_t m_now = 1'700'000'000 * kTicksPerSecond;
  EventJournal m_journal{[this] { return m_now; }};
};

TEST_F(Journal, StartsEmpty) { EXPECT_THAT(namesOf(kForever), IsEmpty()); }

TEST_F(Journal, TellsTheNewestFirst) {
  record(L"first");
  record(L"second");
  EXPECT_THAT(namesOf(10), ElementsAre(L"second", L"first"));
}

TEST_F(Journal, StampsAnEventWithTheTimeOfItsRecording) {
  record(L"first");
  passSeconds(3);
  record(L"second");
  const auto events = m_journal.getRecent(10);
  EXPECT_EQ(events.at(0)->creationTime(), m_now);
  EXPECT_EQ(events.at(1)->creationTime(), m_now - 3 * kTicksPerSecond);
}

TEST_F(Journal, IgnoresANullPointer) {
  m_journal.add(nullptr);
  EXPECT_THAT(m_journal.getRecent(kForever), IsEmpty());
}

TEST_F(Journal, TellsNoEventOlderThanAsked) {
  record(L"old");
  passSeconds(5);
  record(L"new");
  EXPECT_THAT(namesOf(5), ElementsAre(L"new", L"old"));
  m_now += 1;
  EXPECT_THAT(namesOf(5), ElementsAre(L"new"));
}

TEST_F(Journal, TellsOfNoSecondsOnlyThePresentTick) {
  record(L"before");
  m_now += 1;
  record(L"now");
  EXPECT_THAT(namesOf(0), ElementsAre(L"now"));
  m_now += 1;
  EXPECT_THAT(namesOf(0), IsEmpty());
}

TEST_F(Journal, StopsAtTheFirstOldEventEvenWhenTheClockWasTurnedBack) {
  record(L"ahead");
  passSeconds(-100);
  record(L"behind");
  passSeconds(100);
  EXPECT_THAT(namesOf(50), IsEmpty());
  EXPECT_THAT(namesOf(100), ElementsAre(L"behind", L"ahead"));
}

class AgeBeyondTheClock : public Journal, public testing::WithParamInterface<std::uint64_t> {};

TEST_P(AgeBeyondTheClock, TakesEveryEvent) {
  record(L"present");
  m_now = 0;
  record(L"epoch");
  m_now = -1'700'000'000 * kTicksPerSecond;
  record(L"before the epoch");
  EXPECT_THAT(namesOf(GetParam()), ElementsAre(L"before the epoch", L"epoch", L"present"));
}

INSTANTIATE_TEST_SUITE_P(Events, AgeBeyondTheClock,
                         testing::Values(4'000'000'000u, 922'337'203'685u, 922'337'203'686u,
                                         std::uint64_t{1} << 63,
                                         std::numeric_limits<std::uint64_t>::max() / 2,
                                         std::numeric_limits<std::uint64_t>::max()));

TEST_F(Journal, DropsTheOldestOfAThousandAndOne) {
  for (int event = 1; event <= 1000; ++event) record(std::to_wstring(event));
  EXPECT_EQ(namesOf(kForever).size(), 1000u);
  EXPECT_EQ(namesOf(kForever).back(), L"1");
  record(L"1001");
  EXPECT_EQ(namesOf(kForever).size(), 1000u);
  EXPECT_EQ(namesOf(kForever).front(), L"1001");
  EXPECT_EQ(namesOf(kForever).back(), L"2");
}

TEST_F(Journal, LeavesADroppedEventToItsReader) {
  record(L"kept by a reader");
  const auto kept = m_journal.getRecent(0).at(0);
  for (int event = 1; event <= 1000; ++event) record(std::to_wstring(event));
  EXPECT_EQ(kept.use_count(), 1);
  EXPECT_EQ(kept->toServiceObject().member(L"event_source_name").toString(), L"kept by a reader");
}

TEST_F(Journal, SharesItsEvents) {
  record(L"shared");
  EXPECT_EQ(m_journal.getRecent(0).at(0), m_journal.getRecent(0).at(0));
}

TEST(JournalOfTheModule, IsOneAndGoesByTheWallClock) {
  auto& journal = EventJournal::instance();
  EXPECT_EQ(&EventJournal::instance(), &journal);
  const auto before = currentTicks();
  journal.add(std::make_shared<mirn_events::volume_event>(EventSeverity::INFO, VolumeEventType::VOLUME_ADDED,
                                                          sampleVolume(L"1")));
  const auto stamped = journal.getRecent(3600).at(0)->creationTime();
  EXPECT_GE(stamped, before);
  EXPECT_LE(stamped, currentTicks());
}

}  // namespace
