#include "revisions/revision_watch.h"

#include <gtest/gtest.h>

#include <future>

#include "host/revisions/watched_machine.h"

namespace host {

namespace {

class RevisionWatchTest : public testing::Test {
 protected:
  std::future<void> await(RevisionWatch::Place& place, bool countsEvents = false) {
    auto promise = std::make_shared<std::promise<void>>();
    place.await(m_machine.position(), countsEvents, [promise] { promise->set_value(); });
    return promise->get_future();
  }

  static bool isWoken(std::future<void>& woken) {
    return woken.wait_for(std::chrono::milliseconds(50)) == std::future_status::ready;
  }

  WatchedMachine m_machine;
  RevisionWatch m_watch{m_machine, 2};
};

TEST_F(RevisionWatchTest, WakesAllForTheNextRevision) {
  const auto first = m_watch.takePlace();
  const auto second = m_watch.takePlace();
  auto firstWoken = await(*first);
  auto secondWoken = await(*second);
  EXPECT_FALSE(isWoken(firstWoken));
  m_machine.change();
  firstWoken.wait();
  secondWoken.wait();
}

TEST_F(RevisionWatchTest, WakesWhoeverComesTooLateAtOnce) {
  const auto place = m_watch.takePlace();
  const ovra::PluginPosition before = m_machine.position();
  m_machine.change();
  bool isAwake = false;
  place->await(before, false, [&] { isAwake = true; });
  EXPECT_TRUE(isAwake);
}

TEST_F(RevisionWatchTest, EventsCountForThoseWhoSaySo) {
  const auto lists = m_watch.takePlace();
  const auto events = m_watch.takePlace();
  auto listsWoken = await(*lists);
  auto eventsWoken = await(*events, true);
  m_machine.addEvent();
  eventsWoken.wait();
  EXPECT_FALSE(isWoken(listsWoken));
}

TEST_F(RevisionWatchTest, PlacesAreBoundedAndComeBack) {
  auto first = m_watch.takePlace();
  const auto second = m_watch.takePlace();
  EXPECT_EQ(m_watch.takePlace(), nullptr);
  first.reset();
  EXPECT_NE(m_watch.takePlace(), nullptr);
}

TEST_F(RevisionWatchTest, NobodyIsWokenWhoHasGone) {
  auto place = m_watch.takePlace();
  auto woken = await(*place);
  place.reset();
  m_machine.change();
  EXPECT_THROW(woken.get(), std::future_error) << "what was to be called has gone along";
}

/// Waits for nobody, as a plug-in at its end.
class ImpatientMachine final : public ovra::watched_plugin_1 {
 public:
  ovra::PluginPosition position() override { return {L"0123456789abcdef", 7, 5, 3}; }
  bool waitForChange(const ovra::PluginPosition&, std::int64_t) override {
    if (++m_waits == 3) m_thrice.set_value();
    return false;
  }
  ovra::data_transfer::ServiceObject eventsAfter(std::uint64_t, std::uint64_t) override { return {}; }
  ovra::data_transfer::ServiceObject picture() override { return {}; }

  std::future<void> thrice() { return m_thrice.get_future(); }

 private:
  int m_waits = 0;  // of the watch's one thread
  std::promise<void> m_thrice;
};

TEST(RevisionWatch, TakesItsTimeWithAPluginThatWaitsForNobody) {
  ImpatientMachine machine;
  RevisionWatch watch(machine, 1);
  const auto place = watch.takePlace();
  place->await(machine.position(), false, [] {});
  EXPECT_EQ(machine.thrice().wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
}

}  // namespace

}  // namespace host
