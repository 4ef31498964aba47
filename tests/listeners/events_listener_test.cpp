#include "events_listener.h"

#include "event_journal.h"
#include "listeners/order_of_checks.h"
#include "support/by_name.h"
#include "support/moved_clock.h"

namespace {

/// The journal is the module's own: whatever earlier tests of the process recorded is hours old by now.
class EventsListenerTest : public ListenerTest<EventsListener> {
 protected:
  EventsListenerTest() { passSeconds(10 * 3600); }

  std::string getSeconds(const std::wstring& time) { return get("", {{L"time", time}}); }
};

void record(const std::wstring& name) {
  EventJournal::instance().add(std::make_shared<mirn_events::volume_event>(
      EventSeverity::INFO, VolumeEventType::VOLUME_ADDED, aVolume(L"7").name(name).make()));
}

TEST_F(EventsListenerTest, AnEmptyJournalIsAnEmptyArray) {
  EXPECT_EQ(getSeconds(L"0"), "[]");
  EXPECT_EQ(getSeconds(L"3600"), "[]");
}

TEST_F(EventsListenerTest, TellsTheFormsOfEventsNewestFirst) {
  record(L"First");
  record(L"Second");
  const auto events = EventJournal::instance().getRecent(3600);
  ServiceObject expected = ServiceObject::array();
  for (std::size_t i = 0; i < events.size(); ++i) expected.at(i) = events[i]->toServiceObject();
  EXPECT_EQ(getSeconds(L"3600"), describe(expected));
  EXPECT_NE(describe(expected).find("[0].event_source_name = \"Second\""), std::string::npos);
  EXPECT_NE(describe(expected).find("[1].event_source_name = \"First\""), std::string::npos);
}

TEST_F(EventsListenerTest, LeavesOutWhatIsOlderThanTheTime) {
  record(L"Older");
  passSeconds(60);
  record(L"Newer");
  passSeconds(120);
  const std::string newer = R"([0].event_source_name = "Newer")";
  const std::string older = R"([1].event_source_name = "Older")";
  for (const wchar_t* const time : {L"0", L"2", L"119"}) EXPECT_EQ(getSeconds(time), "[]");
  for (const wchar_t* const time : {L"120", L"179"}) {
    EXPECT_NE(getSeconds(time).find(newer), std::string::npos);
    EXPECT_EQ(getSeconds(time).find(older), std::string::npos);
  }
  EXPECT_NE(getSeconds(L"180").find(older), std::string::npos);
}

TEST_F(EventsListenerTest, TakesTheWholeRangeOfSeconds) {
  record(L"Any");
  EXPECT_NE(getSeconds(L"4294967295").find("[0].event_source_name = \"Any\""), std::string::npos);
}

TEST_F(EventsListenerTest, ATimeOutOfRangeOrNoNumberIsInvalid) {
  for (const wchar_t* time : {L"-1", L"abc", L"4294967296", L"", L" 1", L"9223372036854775808"}) {
    expectRefused(getSeconds(time), "INVALID_PARAMETER", "Invalid time parameter");
  }
}

TEST_F(EventsListenerTest, TheTimeIsRequired) { expectInvalid(get(""), "Argument: time not present"); }

TEST_F(EventsListenerTest, ReadsIgnoreABody) {
  EXPECT_NE(ask({HttpMethod::kGet, "", body({{"x", true}}), {{L"time", L"0"}}}).find("["), std::string::npos);
}

void arrangeNothing(FakeSession&) {}

INSTANTIATE_TEST_SUITE_P(Events, OrderOfChecks,
                         testing::Values(checksOf<EventsListener>(
                             "List", arrangeNothing, {HttpMethod::kGet, "", {}, {{L"time", L"0"}}},
                             {unknownParameter(),
                              {"bad time", [](Situation& s) { s.request.parameters[L"time"] = L"abc"; },
                               refused("INVALID_PARAMETER", "Invalid time parameter")}})),
                         ByName());

}  // namespace
