#include "state/state_store.h"

#include <gtest/gtest.h>

#include "engine/incidents.h"
#include "engine/work.h"
#include "simulator/state/state_fixture.h"

namespace simulator {
namespace {

using StateStoreTest = StateFixture;

TEST_F(StateStoreTest, BeginsWithTheScenarioAndKeepsItAtOnce) {
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(read("state.json"), machine());
  EXPECT_FALSE(isThere("state.json.journal"));
}

TEST_F(StateStoreTest, WritesNothingWhenNothingIsNew) {
  ASSERT_EQ(start(), 0U);
  stop();
  const auto before = boost::filesystem::last_write_time(path("state.json"));
  boost::filesystem::last_write_time(path("state.json"), before - 100);
  ASSERT_EQ(start(), 0U);
  stop();
  EXPECT_EQ(boost::filesystem::last_write_time(path("state.json")), before - 100);
}

TEST_F(StateStoreTest, FindsEveryAnsweredChangeAfterAKill) {
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  ASSERT_EQ(library().control([](Machine& machine) { pullDevice(machine, findDevice(machine, "a2")); }), 0U);
  ASSERT_EQ(rename("two"), 0U);
  const std::string before = machine();
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(machine(), before);
  EXPECT_EQ(read("state.json"), before) << "folded after loading";
  EXPECT_EQ(read("state.json.journal"), "");
}

TEST_F(StateStoreTest, FoldsAJournalThatIsFull) {
  m_options.maxJournalSize = 2000;
  ASSERT_EQ(start(), 0U);
  for (int turn = 0; turn < 100; ++turn) {
    ASSERT_EQ(rename("turn " + std::to_string(turn)), 0U);
    ASSERT_LE(read("state.json.journal").size(), 2000U);
  }
  EXPECT_EQ(read("state.json").find("\"five\",\"array\""), std::string::npos) << "it has been folded";
  const std::string before = machine();
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(machine(), before);
}

TEST_F(StateStoreTest, FindsAStateThatTookItsPlaceBeforeTheJournalWasCleared) {
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  const std::string journal = read("state.json.journal");
  stop();  // folds
  const std::string state = read("state.json");
  writeText(path("state.json.journal"), journal + "{\"state\":\"" + digestOf(state) + "\"}\n");
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(machine(), state);
}

TEST_F(StateStoreTest, GoesOnFromTheOldStateWhenTheAnnouncedOneNeverCame) {
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  const std::string before = machine();
  kill();
  writeText(path("state.json.journal"), read("state.json.journal") + "{\"state\":\"0123\"}\n");
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(machine(), before);
}

TEST_F(StateStoreTest, LeavesATornLastLineOut) {
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  const std::string whole = read("state.json.journal");
  ASSERT_EQ(rename("two"), 0U);
  const std::string longer = read("state.json.journal");
  kill();
  const std::string state = read("state.json");
  for (std::size_t size = whole.size() + 1; size < longer.size(); size += 37) {
    writeText(path("state.json"), state);
    writeText(path("state.json.journal"), longer.substr(0, size));
    EXPECT_EQ(said([&] { ASSERT_EQ(start(), 0U); }),
              "VEXL2: " + path("state.json.journal") +
                  ": its last line is torn and left out: it was never answered\n");
    EXPECT_EQ(name(), "one");
    kill();
  }
}

TEST_F(StateStoreTest, TakesAFileThatSomebodyWroteWithoutHandles) {
  writeText(path("state.json"), kWorkbench);
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  ASSERT_EQ(start(), 0U);
  EXPECT_EQ(name(), "one");
}

TEST_F(StateStoreTest, IsForOneAtATimeAndSaysWho) {
  ASSERT_EQ(start(), 0U);
  Library other(Clock(), m_options);
  const std::string holder = holderOf(path("state.json.lock"));
  EXPECT_EQ(said([&] { EXPECT_EQ(other.initialize("VexInitialize"), VEX_STATUS_FAILED); }),
            "VEXL2: " + path("state.json") + ": is in use by process " + holder +
                "; stop that one, or name another file with VEXL2_STATE\n");
  stop();
  EXPECT_EQ(other.initialize("VexInitialize"), 0U);
  EXPECT_EQ(other.finalize("VexFinalize"), 0U);
}

TEST_F(StateStoreTest, KeepsProgressAtTheEndOfAWait) {
  Clock::Instant now{};
  m_options.lockWait.sleep = {};
  Library library(Clock([&] { return now; }), m_options);
  ASSERT_EQ(library.initialize("VexInitialize"), 0U);
  ASSERT_EQ(library.setClockSpeed(0), 0U);
  ASSERT_EQ(library.capWait(0), 0U);
  Handle event = 0;
  ASSERT_EQ(library.subscribe("VexGetEventHandle", &event), 0U);
  ASSERT_EQ(library.control([](Machine& machine) {
    for (auto& entry : machine.volumes) {
      if (entry.second.name == "five") startVerify(machine, entry.second, false);
    }
  }),
            0U);
  const auto lines = [&] {
    const std::string journal = read("state.json.journal");
    return std::count(journal.begin(), journal.end(), '\n');
  };
  EXPECT_EQ(lines(), 2);
  ASSERT_EQ(library.advanceClock(1000), 0U);
  EXPECT_EQ(lines(), 2) << "progress alone";
  EXPECT_EQ(library.wait("VexEventWait", 0, event), 0U);
  EXPECT_EQ(lines(), 3);
  EXPECT_NE(read("state.json.journal").find("\"elapsedMs\":1000"), std::string::npos);
  EXPECT_EQ(library.wait("VexEventWait", 0, event), 9U);
  EXPECT_EQ(lines(), 3) << "not more than once in five seconds";
  now += std::chrono::seconds(5);
  EXPECT_EQ(library.wait("VexEventWait", 0, event), 9U);
  EXPECT_EQ(lines(), 4);
}

}  // namespace
}  // namespace simulator
