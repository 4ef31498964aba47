#include "scenario/changes.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

#include "engine/incidents.h"
#include "engine/work.h"
#include "rules/apply.h"
#include "rules/rules.h"
#include "scenario/scenario.h"
#include "simulator/workbench.h"

namespace simulator {
namespace {

/// Things that change objects of every kind, make them and take them away; most are refused at times.
class Storm {
 public:
  explicit Storm(Machine& machine) : m_machine(machine) {}

  void strike() {
    switch (m_random() % 12) {
      case 0:
        return advance(m_machine, m_random() % 3000);
      case 1:
        return act([&](Machine& machine) { pullDevice(machine, machine.devices.at(disk())); });
      case 2:
        return act([&](Machine& machine) { insertDevice(machine, machine.devices.at(disk())); });
      case 3:
        return act([&](Machine& machine) { failDisk(machine, machine.devices.at(disk())); });
      case 4:
        return act([&](Machine& machine) { markDiskAsNormal(machine, disk()); });
      case 5:
        return act([&](Machine& machine) { deleteVolume(machine, volume()); });
      case 6:
        return act([&](Machine& machine) { markAsSpare(machine, disk(), 0); });
      case 7:
        return act([&](Machine& machine) { clearMetadata(machine, disk()); });
      case 8:
        return act([&](Machine& machine) { create(machine); });
      case 9:
        return act([&](Machine& machine) { verifyVolume(machine, volume(), 1); });
      case 10:
        return act([&](Machine& machine) { unlockDisk(machine, disk(), "wrong", false); });
      default:
        return act([&](Machine& machine) { renameVolume(machine, volume(), newName()); });
    }
  }

 private:
  void act(const std::function<void(Machine&)>& change) { apply(m_machine, change); }

  void create(Machine& machine) {
    const std::string name = newName();
    NewVolume wanted;
    wanted.name = name;
    wanted.level = VEX_RAID_LEVEL_0;
    wanted.stripSize = VEX_STRIP_SIZE_128KB;
    wanted.sizeMiB = 10;
    createVolumeFromDisks(machine, {disk(), disk()}, 0, wanted);
  }

  std::string newName() { return "volume " + std::to_string(++m_names); }
  Handle disk() { return any(std::as_const(m_machine).devices); }
  Handle volume() { return any(std::as_const(m_machine).volumes); }

  template <class T>
  Handle any(const Table<T>& table) {
    if (table.size() == 0) return 0;
    auto entry = table.begin();
    std::advance(entry, static_cast<std::ptrdiff_t>(m_random() % table.size()));
    return entry->first;
  }

  Machine& m_machine;
  std::mt19937 m_random{20};
  int m_names = 0;
};

TEST(Changes, LeadFromOneMachineToTheNext) {
  Machine machine = readScenario(kWorkbench);
  const std::string first = writeScenario(machine);
  Storm storm(machine);
  std::vector<std::string> lines;
  for (int step = 0; step < 600; ++step) {
    Edit edit(machine);
    storm.strike();
    const std::string line = writeChanges(edit);
    edit.keep();
    if (!line.empty()) lines.push_back(line);
    if (step % 50 != 49) continue;
    const std::vector<std::string_view> views(lines.begin(), lines.end());
    const Machine again = readScenarioWithChanges(first, views, std::vector<std::string>(lines.size()));
    ASSERT_EQ(writeScenario(again), writeScenario(machine)) << "step " << step;
  }
  EXPECT_GT(lines.size(), 100U);
}

TEST(Changes, CanBeTakenBack) {
  Machine machine = readScenario(kWorkbench);
  Storm storm(machine);
  int different = 0;
  for (int step = 0; step < 600; ++step) {
    const std::string before = writeScenario(machine);
    const std::uint64_t changes = machine.changes;
    {
      const Edit edit(machine);
      storm.strike();
      different += writeScenario(machine) == before ? 0 : 1;
    }
    ASSERT_EQ(writeScenario(machine), before) << "step " << step;
    ASSERT_EQ(machine.changes, changes);
    if (step % 3 == 0) storm.strike();
  }
  EXPECT_GT(different, 100);
}

TEST(Changes, AreNoneWhereNothingDiffers) {
  Machine machine = readScenario(kWorkbench);
  Edit edit(machine);
  for (auto& entry : machine.devices) entry.second.totalSize += 0;
  EXPECT_EQ(writeChanges(edit), "");
}

TEST(Changes, HoldWhatDiffersWhole) {
  Machine machine = readScenario(R"({"engines": [{"id": "mine"}, {"id": "other"}]})");
  Edit edit(machine);
  machine.engines.begin()->second.raidEnabled = false;
  EXPECT_EQ(writeChanges(edit), R"({"engines":[{"id":"mine","handle":1,"raidEnabled":false,"levels":[]}]})"
                                "\n");
}

TEST(Changes, NameWhatIsGone) {
  Machine machine = readScenario(R"({"engines": [{"id": "mine"}, {"id": "other"}]})");
  Edit edit(machine);
  machine.engines.remove(2);
  EXPECT_EQ(writeChanges(edit), "{\"removed\":[2]}\n");
}

}  // namespace
}  // namespace simulator
