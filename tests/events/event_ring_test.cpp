#include "event_ring.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "event_comparison.h"
#include "event_journal.h"
#include "events/sample_objects.h"
#include "text.h"

namespace {

using ovra::data_transfer::ServiceObject;
using testing::ElementsAre;

constexpr auto kAll = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t kRingSize = 65536;

/// What the journal keeps in short.
class Ring : public testing::Test {
 protected:
  void record(const std::wstring& id = L"1") {
    m_journal.add(std::make_shared<mirn_events::volume_event>(
        EventSeverity::INFO, VolumeEventType::VOLUME_ADDED, sampleVolume(id)));
  }

  void record(std::uint64_t count) {
    for (std::uint64_t i = 0; i < count; ++i) record();
  }

  std::vector<std::uint64_t> numbersAfter(std::uint64_t sequence, std::uint64_t limit = kAll) const {
    std::vector<std::uint64_t> numbers;
    for (const auto& event : m_journal.getAfter(sequence, limit).events) numbers.push_back(event->number());
    return numbers;
  }

  std::uint64_t oldest() const { return m_journal.getAfter(0, 0).oldest; }

  ServiceObject newest() const {
    return m_journal.getAfter(m_journal.sequence() - 1, 1).events.at(0)->toServiceObject();
  }

  std::int64_t m_now = 1'700'000'000 * kTicksPerSecond;
  EventJournal m_journal{[this] { return m_now; }};
};

// Numbers

TEST_F(Ring, StartsWithoutEvents) {
  EXPECT_EQ(m_journal.sequence(), 0u);
  EXPECT_EQ(oldest(), 0u);
  EXPECT_THAT(numbersAfter(0), ElementsAre());
}

TEST_F(Ring, NumbersItsEventsFromOne) {
  record(3);
  EXPECT_EQ(m_journal.sequence(), 3u);
  EXPECT_EQ(oldest(), 1u);
  EXPECT_THAT(numbersAfter(0), ElementsAre(1, 2, 3));
}

TEST_F(Ring, TellsWhatFollowsANumber) {
  record(3);
  EXPECT_THAT(numbersAfter(1), ElementsAre(2, 3));
  EXPECT_THAT(numbersAfter(2), ElementsAre(3));
  EXPECT_THAT(numbersAfter(3), ElementsAre());
  EXPECT_THAT(numbersAfter(kAll), ElementsAre()) << "a number that is still to come";
}

TEST_F(Ring, TellsNoMoreThanIsAskedFor) {
  record(5);
  EXPECT_THAT(numbersAfter(1, 2), ElementsAre(2, 3));
  EXPECT_THAT(numbersAfter(1, 4), ElementsAre(2, 3, 4, 5));
  EXPECT_THAT(numbersAfter(0, 0), ElementsAre());
}

TEST_F(Ring, LosesNoneOfTwentyThousand) {
  record(20000);
  const std::vector<std::uint64_t> numbers = numbersAfter(0);
  ASSERT_EQ(numbers.size(), 20000u);
  for (std::uint64_t i = 0; i < numbers.size(); ++i) ASSERT_EQ(numbers[i], i + 1);
  EXPECT_EQ(m_journal.getRecent(kAll).size(), 1000u) << "the journal itself stays as it is";
}

TEST_F(Ring, ShowsByItsOldestNumberThatEventsAreLost) {
  record(kRingSize);
  EXPECT_EQ(oldest(), 1u);
  EXPECT_EQ(numbersAfter(0).size(), kRingSize);

  record(10);
  EXPECT_EQ(m_journal.sequence(), kRingSize + 10);
  EXPECT_EQ(oldest(), 11u);
  EXPECT_THAT(numbersAfter(0, 2), ElementsAre(11, 12)) << "events 1 to 10 are gone";
  EXPECT_THAT(numbersAfter(10, 1), ElementsAre(11)) << "and nobody misses them who knows them";
  EXPECT_THAT(numbersAfter(kRingSize + 8), ElementsAre(kRingSize + 9, kRingSize + 10));
}

TEST_F(Ring, LeavesAnEventToItsReaderWhenItGoes) {
  record(L"7");
  const EventRing::Part part = m_journal.getAfter(0, kAll);
  record(kRingSize);
  EXPECT_EQ(part.events.at(0)->toServiceObject().member(L"objectId").toString(), L"7");
}

// Contents

TEST_F(Ring, StampsAnEventWithTheMillisecondOfItsRecording) {
  m_now += 1'234'567;  // 123 milliseconds and a bit
  record();
  EXPECT_EQ(newest().member(L"moment").toInt64(), 1'700'000'000'123);
  EXPECT_EQ(newest().member(L"moment").which(), 3) << "unsigned";
}

TEST_F(Ring, StampsAnEventAheadOf1970AsOfItsStart) {
  m_now = -5 * kTicksPerSecond;
  record();
  EXPECT_EQ(newest().member(L"moment").toInt64(), 0);
}

TEST_F(Ring, TellsAllThatIsToBeKnownOfAVolumesEvent) {
  const std::wstring name = utf8ToWide("D\xC3\xA4t\xC3\xA4 \xF0\x9D\x84\x9E");  // two units for the last
  record(2);
  m_journal.add(
      std::make_shared<mirn_events::volume_event>(EventSeverity::WARNING, VolumeEventType::VOLUME_DEGRADED,
                                                  sampleVolume(L"8", VolumeState::DEGRADED, name),
                                                  VolumeStates{VolumeState::NORMAL, VolumeState::DEGRADED}));
  const ServiceObject event = newest();
  EXPECT_EQ(event.asObject().size(), 10u);
  EXPECT_EQ(event.member(L"number").toInt64(), 3);
  EXPECT_EQ(event.member(L"number").which(), 3) << "unsigned";
  EXPECT_EQ(event.member(L"kind").toString(), L"VOLUME_DEGRADED");
  EXPECT_EQ(event.member(L"severity").toString(), L"WARNING");
  EXPECT_EQ(event.member(L"description").toString(), name + L" was degraded");
  EXPECT_EQ(event.member(L"objectType").toString(), L"VOLUME");
  EXPECT_EQ(event.member(L"objectId").toString(), L"8");
  EXPECT_EQ(event.member(L"objectName").toString(), name);
  EXPECT_EQ(event.member(L"oldState").toString(), L"NORMAL");
  EXPECT_EQ(event.member(L"newState").toString(), L"DEGRADED");
}

TEST_F(Ring, TellsAllThatIsToBeKnownOfADisksEvent) {
  m_journal.add(std::make_shared<mirn_events::disk_event>(EventSeverity::ERROR, DiskEventType::DISK_FAILED,
                                                          sampleDevice({L"9", DiskState::FAILED})));
  const ServiceObject event = newest();
  EXPECT_EQ(event.asObject().size(), 8u) << "no states";
  EXPECT_EQ(event.member(L"kind").toString(), L"DISK_FAILED");
  EXPECT_EQ(event.member(L"severity").toString(), L"ERROR");
  EXPECT_EQ(event.member(L"description").toString(), L"SATA SN1 at 0-1-2-3 failed");
  EXPECT_EQ(event.member(L"objectType").toString(), L"DISK");
  EXPECT_EQ(event.member(L"objectId").toString(), L"9");
  EXPECT_EQ(event.member(L"objectName").toString(), L"SATA SN1");
}

/// The words are those of the journal's own events.
TEST_F(Ring, SpeaksAsTheJournalDoes) {
  const std::pair<const wchar_t*, const wchar_t*> kSameWords[] = {{L"kind", L"event_type"},
                                                                  {L"severity", L"severity"},
                                                                  {L"description", L"description"},
                                                                  {L"objectType", L"event_source"},
                                                                  {L"objectName", L"event_source_name"}};
  const auto judge = [&] {
    const ServiceObject inShort = newest();
    const ServiceObject whole = m_journal.getRecent(kAll).front()->toServiceObject();
    for (const auto& [key, keyOfJournal] : kSameWords) {
      EXPECT_EQ(inShort.member(key).toString(), whole.member(keyOfJournal).toString());
    }
  };
  for (int severity = 0; severity <= 4; ++severity) {
    for (int type = 0; type <= 26; ++type) {
      m_journal.add(std::make_shared<mirn_events::volume_event>(
          static_cast<EventSeverity>(severity), static_cast<VolumeEventType>(type), sampleVolume(L"1")));
      judge();
    }
    for (int type = 0; type <= 7; ++type) {
      m_journal.add(std::make_shared<mirn_events::disk_event>(
          static_cast<EventSeverity>(severity), static_cast<DiskEventType>(type), sampleDevice({L"1"})));
      judge();
    }
  }
}

// States

class RingStates : public Ring {
 protected:
  using Volumes = std::vector<Volume>;

  /// Those of the one event between two pictures.
  std::pair<std::wstring, std::wstring> between(const Volumes& before, const Volumes& after) {
    const std::uint64_t known = m_journal.sequence();
    compareVolumes(before, after, m_journal);
    EXPECT_EQ(m_journal.sequence(), known + 1);
    const ServiceObject event = newest();
    const auto stateOf = [&](const wchar_t* key) {
      return event.hasKey(key) ? event.member(key).toString() : L"none";
    };
    return {stateOf(L"oldState"), stateOf(L"newState")};
  }
};

TEST_F(RingStates, TellWhatAVolumeWasAndIs) {
  const auto is = [](const wchar_t* before, const wchar_t* after) {
    return std::pair<std::wstring, std::wstring>(before, after);
  };
  const Volumes none;
  EXPECT_EQ(between({sampleVolume(L"1", VolumeState::REBUILDING)}, {sampleVolume(L"1", VolumeState::FAILED)}),
            is(L"REBUILDING", L"FAILED"));
  EXPECT_EQ(between(none, {sampleVolume(L"1", VolumeState::INITIALIZING)}), is(L"none", L"INITIALIZING"));
  EXPECT_EQ(between({sampleVolume(L"1", VolumeState::DEGRADED)}, none), is(L"DEGRADED", L"none"));
}

}  // namespace
