#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "engine/incidents.h"
#include "engine/work.h"
#include "model/disk_role.h"
#include "model/invariants.h"
#include "model/redundancy.h"
#include "rules/apply.h"
#include "rules/rules.h"
#include "scenario/scenario.h"
#include "simulator/workbench.h"
#include "support/by_name.h"

namespace simulator {
namespace {

/// Does one thing after another to a machine: actions with good and bad arguments, incidents and time, all
/// told by the seed.
class Walk {
 public:
  /// `longestPause` is the longest time that passes at once, in milliseconds.
  Walk(std::string_view scenario, std::uint32_t seed, std::uint32_t longestPause)
      : m_machine(readScenario(scenario)), m_random(seed), m_longestPause(longestPause) {
    for (auto& entry : m_machine.devices) entry.second.userPassword = "user";
  }

  const Machine& machine() const { return m_machine; }

  /// How often each action was not refused.
  const std::map<std::string, int>& done() const { return m_done; }

  /// Returns the status of what was done; 0 for a step of the clock.
  Status step() {
    if (oneIn(8)) {
      advance(m_machine, number(m_longestPause));
      return 0;
    }
    const Action& action = kActions[number(static_cast<std::uint32_t>(kActions.size()))];
    const Status status = apply(m_machine, [&](Machine& machine) { action.act(*this, machine); });
    m_done[action.name] += status == 0 ? 1 : 0;
    return status;
  }

 private:
  using Act = std::function<void(Walk&, Machine&)>;
  struct Action {
    std::string name;
    Act act;
  };
  static const std::vector<Action> kActions;

  /// The rule with arguments drawn one after another: the order is the same with every compiler.
  template <class Rule, class... Arguments>
  static Act rule(Rule rule, Arguments (Walk::*... draw)()) {
    return [=](Walk& walk, Machine& machine) {
      const std::tuple<Arguments...> arguments{(walk.*draw)()...};
      std::apply([&](const auto&... each) { rule(machine, each...); }, arguments);
    };
  }

  /// An incident that befalls a device in one of `rarity` cases.
  static Act incident(void (*incident)(Machine&, EndDevice&), std::uint32_t rarity, Handle (Walk::*draw)()) {
    return [=](Walk& walk, Machine& machine) {
      require(walk.oneIn(rarity), VEX_STATUS_INVALID_STATE);
      incident(machine, machine.devices.at((walk.*draw)()));
    };
  }

  std::uint32_t number(std::uint32_t limit) { return static_cast<std::uint32_t>(m_random() % limit); }

  bool oneIn(std::uint32_t count) { return number(count) == 0; }

  /// Mostly a handle of the table, sometimes any number.
  template <class T>
  Handle any(const Table<T>& table) {
    if (table.size() == 0 || oneIn(40)) return number(200);
    auto entry = table.begin();
    std::advance(entry, number(static_cast<std::uint32_t>(table.size())));
    return entry->first;
  }

  /// Mostly a device that `suits`, sometimes any handle.
  template <class Suits>
  Handle device(Suits suits) {
    std::vector<Handle> suitable;
    for (const auto& entry : m_machine.devices) {
      if (suits(entry.second)) suitable.push_back(entry.first);
    }
    if (suitable.empty() || oneIn(10)) return any(m_machine.devices);
    return suitable[number(static_cast<std::uint32_t>(suitable.size()))];
  }

  Handle diskIn(DiskState state) {
    return device([&](const EndDevice& each) { return stateOf(each) == state; });
  }
  Handle diskFor(DiskUsage usage) {
    return device([&](const EndDevice& each) { return usageOf(each) == usage; });
  }
  Handle volumeIn(VolumeState state) {
    for (const auto& entry : m_machine.volumes) {
      if (stateOf(m_machine, entry.second) == state && !oneIn(3)) return entry.first;
    }
    return volume();
  }

  // What arguments are drawn from.

  Handle controller() { return any(m_machine.controllers); }
  Handle port() { return any(m_machine.ports); }
  Handle phy() { return any(m_machine.phyOwner); }
  Handle disk() { return any(m_machine.devices); }
  Handle freeDisk() { return device(isFree); }
  Handle member() { return diskFor(DiskUsage::ARRAY_MEMBER); }
  Handle spareDisk() { return diskFor(DiskUsage::SPARE); }
  Handle foreignDisk() { return diskFor(DiskUsage::OFFLINE_ARRAY); }
  Handle failedDisk() { return diskIn(DiskState::FAILED); }
  Handle lockedDisk() { return diskIn(DiskState::LOCKED); }
  Handle smartDisk() { return diskIn(DiskState::SMART_EVENT_TRIGGERED); }
  Handle absentDevice() {
    return device([](const EndDevice& each) { return each.presence == Presence::ABSENT; });
  }
  Handle array() { return any(m_machine.arrays); }
  Handle arrayOrNone() { return oneIn(2) ? 0 : array(); }
  Handle volume() { return any(m_machine.volumes); }
  Handle normalVolume() { return volumeIn(VolumeState::NORMAL); }
  Handle degradedVolume() { return volumeIn(VolumeState::DEGRADED); }
  Handle failedVolume() { return volumeIn(VolumeState::FAILED); }
  Handle verifyingVolume() { return volumeIn(VolumeState::VERIFYING); }
  Handle volumeWithFailedDisk() { return volumeIn(VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK); }

  std::uint32_t flag() { return oneIn(20) ? 2 : number(2); }
  std::uint32_t zero() { return oneIn(20) ? 1 : 0; }
  std::uint32_t policy() { return number(5); }
  std::uint8_t pool() { return static_cast<std::uint8_t>(number(256)); }
  std::uint32_t level() { return oneIn(30) ? 3 : 1U << number(4); }
  std::uint32_t strip() { return oneIn(20) ? number(100) : (oneIn(2) ? 0x20 : 0x40); }
  std::uint64_t size() { return oneIn(2) ? 0 : number(2500); }
  bool isMaster() { return oneIn(10); }
  std::string password() { return oneIn(4) ? "guess" : "user"; }

  std::string name() {
    static const char* const kNames[] = {"one", "two",   "three", "four", "five",
                                         "six", "seven", "eight", "",     " bad"};
    return kNames[number(10)];
  }

  /// Mostly free disks of one controller.
  std::vector<Handle> disks(std::uint32_t most) {
    std::vector<Handle> result;
    const Handle owner = controller();
    const auto suits = [&](const EndDevice& each) {
      return isFree(each) && each.controller == owner &&
             std::count(result.begin(), result.end(), each.handle) == 0;
    };
    for (std::uint32_t count = number(most + 1); count > 0; --count) result.push_back(device(suits));
    return result;
  }
  std::vector<Handle> manyDisks() { return disks(5); }
  std::vector<Handle> fewDisks() { return disks(2); }
  std::vector<Handle> noDisks() { return {}; }

  NewVolume newVolume() {
    m_name = name();
    NewVolume wanted;
    wanted.name = m_name;
    wanted.stripSize = strip();
    wanted.level = level();
    wanted.sizeMiB = size();
    wanted.rwhPolicy = oneIn(2) ? 0 : number(4);
    wanted.journalingDrive = freeDisk();
    return wanted;
  }

  static void createFromDisks(Machine& machine, const std::vector<Handle>& disks, const NewVolume& wanted) {
    createVolumeFromDisks(machine, disks, 0, wanted);
  }

  static void createFromSource(Machine& machine, const std::vector<Handle>& disks, const NewVolume& wanted) {
    createVolumeFromDisks(machine, disks, disks.empty() ? 0 : disks.back(), wanted);
  }

  Machine m_machine;
  std::mt19937 m_random;
  std::uint32_t m_longestPause;
  std::string m_name;  ///< of the volume wanted last
  std::map<std::string, int> m_done;
};

/// Some stand twice or more, so that machines are mended faster than they break.
const std::vector<Walk::Action> Walk::kActions = {
    {"rescan", rule(rescan)},
    {"setReadPatrol", rule(setReadPatrol, &Walk::controller, &Walk::flag)},
    {"setRohi", rule(setRohi, &Walk::controller, &Walk::flag)},
    {"locatePort", rule(locatePort, &Walk::port, &Walk::flag)},
    {"clearMetadata", rule(clearMetadata, &Walk::disk)},
    {"clearMetadata", rule(clearMetadata, &Walk::foreignDisk)},
    {"markDiskAsNormal", rule(markDiskAsNormal, &Walk::failedDisk)},
    {"markDiskAsNormal", rule(markDiskAsNormal, &Walk::failedDisk)},
    {"markAsSpare", rule(markAsSpare, &Walk::freeDisk, &Walk::arrayOrNone)},
    {"unmarkAsSpare", rule(unmarkAsSpare, &Walk::spareDisk)},
    {"unmarkAsSpare", rule(unmarkAsSpare, &Walk::spareDisk)},
    {"assignStoragePool", rule(assignStoragePool, &Walk::freeDisk, &Walk::pool)},
    {"unlockDisk", rule(unlockDisk, &Walk::lockedDisk, &Walk::password, &Walk::isMaster)},
    {"unlockDisk", rule(unlockDisk, &Walk::lockedDisk, &Walk::password, &Walk::isMaster)},
    {"resetSmartEvent", rule(resetSmartEvent, &Walk::smartDisk)},
    {"removePhy", rule(removePhy, &Walk::phy, &Walk::flag)},
    {"setWriteCache", rule(setWriteCache, &Walk::array, &Walk::flag)},
    {"addDisks", rule(addDisks, &Walk::array, &Walk::fewDisks, &Walk::zero)},
    {"createVolume", rule(createVolume, &Walk::array, &Walk::newVolume)},
    {"createVolume", rule(createVolume, &Walk::array, &Walk::newVolume)},
    {"createFromSource", rule(createFromSource, &Walk::manyDisks, &Walk::newVolume)},
    {"createFromDisks", rule(createFromDisks, &Walk::manyDisks, &Walk::newVolume)},
    {"createFromDisks", rule(createFromDisks, &Walk::manyDisks, &Walk::newVolume)},
    {"deleteVolume", rule(deleteVolume, &Walk::volume)},
    {"rebuildVolume", rule(rebuildVolume, &Walk::degradedVolume, &Walk::freeDisk)},
    {"rebuildVolume", rule(rebuildVolume, &Walk::degradedVolume, &Walk::freeDisk)},
    {"initializeVolume", rule(initializeVolume, &Walk::normalVolume)},
    {"verifyVolume", rule(verifyVolume, &Walk::normalVolume, &Walk::flag)},
    {"verifyVolume", rule(verifyVolume, &Walk::normalVolume, &Walk::flag)},
    {"cancelVerify", rule(cancelVerify, &Walk::verifyingVolume)},
    {"cancelVerify", rule(cancelVerify, &Walk::verifyingVolume)},
    {"markVolumeAsNormal", rule(markVolumeAsNormal, &Walk::failedVolume)},
    {"markVolumeAsNormal", rule(markVolumeAsNormal, &Walk::volumeWithFailedDisk)},
    {"renameVolume", rule(renameVolume, &Walk::volume, &Walk::name)},
    {"setCachePolicy", rule(setCachePolicy, &Walk::volume, &Walk::policy)},
    {"setRwhPolicy", rule(setRwhPolicy, &Walk::volume, &Walk::freeDisk, &Walk::policy)},
    {"expandVolume", rule(expandVolume, &Walk::normalVolume, &Walk::size)},
    {"modifyRaidLevel",
     rule(modifyRaidLevel, &Walk::volume, &Walk::level, &Walk::strip, &Walk::size, &Walk::fewDisks)},
    {"modifyRaidLevel",
     rule(modifyRaidLevel, &Walk::volume, &Walk::level, &Walk::strip, &Walk::size, &Walk::noDisks)},
    {"failDisk", incident(failDisk, 8, &Walk::member)},
    {"pullDevice", incident(pullDevice, 16, &Walk::member)},
    {"pullDevice", incident(pullDevice, 16, &Walk::disk)},
    {"insertDevice", incident(insertDevice, 1, &Walk::absentDevice)},
    {"insertDevice", incident(insertDevice, 1, &Walk::absentDevice)},
    {"lockDisk", incident(lockDisk, 20, &Walk::disk)},
    {"raiseSmartEvent", incident(raiseSmartEvent, 8, &Walk::disk)},
};

struct WalkRow {
  std::string name;
  std::string_view scenario;
  std::uint32_t seed;
  std::uint32_t longestPause;
  int steps;
  bool meetsEverything;  ///< long enough for every action to be taken at least once
};

void PrintTo(const WalkRow& row, std::ostream* stream) { *stream << row.name; }

class RandomWalk : public testing::TestWithParam<WalkRow> {};

TEST_P(RandomWalk, KeepsTheRulesOfTheMachine) {
  Walk walk(GetParam().scenario, GetParam().seed, GetParam().longestPause);
  for (int step = 0; step < GetParam().steps; ++step) {
    walk.step();
    const std::string violation = findViolation(walk.machine());
    ASSERT_EQ(violation, "") << "after step " << step;
  }
  if (!GetParam().meetsEverything) return;
  for (const auto& entry : walk.done()) EXPECT_GT(entry.second, 0) << entry.first << " was always refused";
}

TEST_P(RandomWalk, AnswersARefusalWithoutAChange) {
  Walk walk(GetParam().scenario, GetParam().seed + 1, GetParam().longestPause);
  for (int step = 0; step < GetParam().steps / 50; ++step) {
    const std::string before = writeScenario(walk.machine());
    const Status status = walk.step();
    if (status == 0 || status == VEX_STATUS_WRONG_PASSWORD) continue;
    ASSERT_EQ(writeScenario(walk.machine()), before) << "step " << step << " answered " << status;
  }
}

TEST_P(RandomWalk, CanBeKeptAndTakenUpAnywhere) {
  Walk walk(GetParam().scenario, GetParam().seed + 2, GetParam().longestPause);
  for (int step = 0; step < GetParam().steps / 100; ++step) {
    walk.step();
    const std::string kept = writeScenario(walk.machine());
    ASSERT_EQ(writeScenario(readScenario(kept)), kept) << "after step " << step;
  }
}

TEST_P(RandomWalk, GoesTheSameWayWithTheSameSeed) {
  Walk one(GetParam().scenario, GetParam().seed, GetParam().longestPause);
  Walk other(GetParam().scenario, GetParam().seed, GetParam().longestPause);
  for (int step = 0; step < GetParam().steps / 20; ++step) ASSERT_EQ(one.step(), other.step());
  EXPECT_EQ(writeScenario(one.machine()), writeScenario(other.machine()));
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomWalk,
                         testing::Values(WalkRow{"Workbench1", kWorkbench, 1, 20000, 60000, true},
                                         WalkRow{"Workbench2", kWorkbench, 20261120, 20000, 40000, true},
                                         WalkRow{"Embedded", embeddedScenario(), 3, 20000000, 20000, false}),
                         ByName());

}  // namespace
}  // namespace simulator
