#include "twin/guesses.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <utility>

#include "engine/work.h"
#include "model/capacity.h"
#include "scenario/parse.h"
#include "twin/conversions.h"
#include "twin/published_words.h"
#include "twin/volume_guesses.h"

namespace simulator {
namespace {

/// Work that takes no longer is too short for every percent to be told apart.
constexpr std::uint64_t kShortestMs = 1000;
constexpr std::uint64_t kWholePercent = 100;

std::string idIn(const boost::json::object& object, const char* key) {
  const boost::json::value* const member = object.if_contains(key);
  return member != nullptr && member->is_string() ? std::string(member->get_string()) : std::string();
}

std::uint64_t numberIn(const boost::json::object& object, const char* key) {
  return numberAt(neededMemberOf(object, key, "volumes"), key);
}

/// Objects of a list by their ids.
template <class List>
auto indexed(List& list, const char* key = "id") {
  std::map<std::string, decltype(&list.front().get_object())> index;
  for (auto& each : list) index.emplace(idIn(each.get_object(), key), &each.get_object());
  return index;
}

using Index = std::map<std::string, boost::json::object*>;
using PublishedIndex = std::map<std::string, const boost::json::object*>;

/// How a member is meant to be beneath its state: a failed disk may be locked, too, and so never come back.
enum class FailedMembers { FAILED_ONLY, LOCKED_TOO };

class Guessing {
 public:
  Guessing(Draft& draft, const Answers& answers)
      : m_draft(draft),
        m_answers(answers),
        m_devices(indexed(draft.devices)),
        m_controllers(indexed(draft.controllers)),
        m_engines(indexed(draft.engines)),
        m_volumes(indexed(draft.volumes)),
        m_publishedDevices(indexed(answers.devices)) {
    for (const auto& each : answers.volumes) {
      m_volumesOfArray[idIn(each.get_object(), "arrayId")].push_back(&each.get_object());
    }
  }

  std::vector<std::string> run() {
    for (std::size_t i = 0; i < m_draft.arrays.size(); ++i) {
      complete(m_draft.arrays[i].get_object(), m_answers.arrays[i].get_object());
    }
    return std::move(m_assumptions);
  }

 private:
  /// One volume's way to its published state.
  struct Found {
    boost::json::object* volume;
    boost::json::object facts;
    std::string assumption;
  };

  void complete(boost::json::object& array, const boost::json::object& published) {
    const std::vector<const boost::json::object*>& volumes = m_volumesOfArray[idIn(array, "id")];
    const std::vector<GuessedMember> members = membersOf(array);
    if (volumes.empty() || members.empty()) return;
    m_targetSizes = targetSizes(published, volumes);
    const bool hasPairs = std::any_of(volumes.begin(), volumes.end(), [](const auto* volume) {
      return idIn(*volume, "raidLevel") == "RAID_10";
    });
    const std::uint64_t sector = sizeAt(neededMemberOf(*volumes.front(), "sectorSize.physical", "volumes"),
                                        "volumes.sectorSize.physical");
    const auto orders = ordersOf(members, hasPairs, sector);
    for (const auto& order : orders) {
      for (const FailedMembers failed : {FailedMembers::FAILED_ONLY, FailedMembers::LOCKED_TOO}) {
        if (settleOn(array, order, failed, volumes)) return;
      }
    }
    useOrder(array, orders.front());  // the difference is told afterwards
  }

  std::vector<GuessedMember> membersOf(const boost::json::object& array) const {
    std::vector<GuessedMember> members;
    for (const auto& id : array.at("disks").get_array()) {
      const boost::json::object& disk = *m_publishedDevices.at(std::string(id.get_string()));
      members.push_back({idIn(disk, "id"), "the disk " + idIn(disk, "serialNumber"), idIn(disk, "state"),
                         sizeAt(neededMemberOf(disk, "sectorSize.physical", "enddevices"),
                                "enddevices.sectorSize.physical")});
    }
    return members;
  }

  /// What the array's volumes take of each disk beyond their present sizes, a migration comes to.
  std::map<std::string, std::uint64_t> targetSizes(
      const boost::json::object& array, const std::vector<const boost::json::object*>& volumes) const {
    const std::uint64_t disks = std::max<std::uint64_t>(numberIn(array, "numDisks"), 1);
    const std::uint64_t total = sizeAt(array.at("totalSize"), "arrays.totalSize") / disks;
    const std::uint64_t free = sizeAt(array.at("freeSize"), "arrays.freeSize") / disks;
    std::uint64_t taken = 0;
    const boost::json::object* migrating = nullptr;
    for (const auto* volume : volumes) {
      taken += shareOf(levelOf(*volume), disks, sizeAt(volume->at("totalSize"), "volumes.totalSize"));
      if (migrating == nullptr && volume->at("migration") == boost::json::value(true)) migrating = volume;
    }
    if (migrating == nullptr || total < free || total - free <= taken) return {};
    const std::uint64_t extra = total - free - taken;
    const RaidLevel level = levelOf(*migrating);
    const std::uint64_t share =
        shareOf(level, disks, sizeAt(migrating->at("totalSize"), "volumes.totalSize"));
    return {{idIn(*migrating, "id"), (share + extra) * dataDisks(level, disks)}};
  }

  static RaidLevel levelOf(const boost::json::object& volume) {
    return fromWord<RaidLevel>(idIn(volume, "raidLevel")).value_or(RaidLevel::RAID_0);
  }

  bool settleOn(boost::json::object& array, const std::vector<GuessedMember>& order, FailedMembers failed,
                const std::vector<const boost::json::object*>& volumes) {
    boost::json::object trial = array;
    useOrder(trial, order);
    std::vector<Found> all;
    for (const auto* volume : volumes) {
      auto found = findWay(trial, order, failed, *volume);
      if (!found) return false;
      all.push_back(std::move(*found));
    }
    useOrder(array, order);
    for (const GuessedMember& member : order) {
      if (failed == FailedMembers::LOCKED_TOO && member.state == "FAILED")
        m_devices.at(member.id)->insert_or_assign("locked", true);
    }
    for (Found& found : all) {
      for (const auto& fact : found.facts) found.volume->insert_or_assign(fact.key(), fact.value());
      if (!found.assumption.empty()) m_assumptions.push_back(found.assumption);
    }
    return true;
  }

  static void useOrder(boost::json::object& array, const std::vector<GuessedMember>& order) {
    boost::json::array disks;
    for (const GuessedMember& member : order) disks.emplace_back(member.id);
    array["disks"] = std::move(disks);
  }

  std::optional<Found> findWay(const boost::json::object& array, const std::vector<GuessedMember>& order,
                               FailedMembers failed, const boost::json::object& published) {
    const std::string id = idIn(published, "id");
    for (const VolumeGuess& guess : guessesOf(published, order, m_targetSizes[id])) {
      boost::json::object volume = *m_volumes.at(id);
      volume["stale"] = boost::json::array(guess.stale.begin(), guess.stale.end());
      if (!guess.work.empty()) volume["work"] = guess.work;
      boost::json::object facts = factsOf(array, order, failed, volume, published);
      if (facts.empty()) continue;
      return Found{m_volumes.at(id), std::move(facts), guess.assumption};
    }
    return {};
  }

  /// Those that bring the volume to its published state; none where these do not.
  boost::json::object factsOf(const boost::json::object& array, const std::vector<GuessedMember>& order,
                              FailedMembers failed, boost::json::object& volume,
                              const boost::json::object& published) const {
    try {
      const bool isAtWork = volume.contains("work");
      if (isAtWork) bringToProgress(array, order, failed, volume, published);
      const Machine machine = readParsedScenario(sceneOf(array, order, failed, volume));
      const Volume& made = (*machine.volumes.begin()).second;
      if (publishedState(machine, made) != idIn(published, "state")) return {};
      boost::json::object facts{{"stale", volume.at("stale")}};
      if (isAtWork) {
        for (const char* key : {"work", "latentErrors", "latentBadBlocks"}) {
          if (volume.contains(key)) facts[key] = volume.at(key);
        }
      }
      return facts;
    } catch (const ScenarioError&) {
      return {};
    }
  }

  /// In the middle between two percents. What is found shows by its part of what there is to be found.
  void bringToProgress(const boost::json::object& array, const std::vector<GuessedMember>& order,
                       FailedMembers failed, boost::json::object& volume,
                       const boost::json::object& published) const {
    const std::uint64_t percent = std::min(numberIn(published, "migrProgress"), kWholePercent);
    boost::json::object& work = volume["work"].get_object();
    work["totalMs"] = kShortestMs;
    work["elapsedMs"] = kShortestMs;
    if (percent == kWholePercent) return;
    work["elapsedMs"] = 1;
    work.erase("totalMs");
    const Machine machine = readParsedScenario(sceneOf(array, order, failed, volume));
    const Volume& made = (*machine.volumes.begin()).second;
    if (!made.work) return;
    const std::uint64_t total = std::max(made.work->totalMs, kShortestMs);
    const std::uint64_t elapsed = total / (2 * kWholePercent) * (2 * percent + 1);
    work["totalMs"] = total;
    work["elapsedMs"] = elapsed;
    if (work.at("kind") != boost::json::value("VERIFY") &&
        work.at("kind") != boost::json::value("VERIFY_AND_FIX"))
      return;
    volume["latentErrors"] = wholeOf(published, "verify.errors", total, elapsed);
    volume["latentBadBlocks"] = wholeOf(published, "verify.badBlocks", total, elapsed);
  }

  /// The least whose part at this progress is what is published.
  static std::uint64_t wholeOf(const boost::json::object& published, const char* key, std::uint64_t total,
                               std::uint64_t elapsed) {
    const std::uint64_t part = numberAt(neededMemberOf(published, key, "volumes"), key);
    if (part > std::numeric_limits<std::uint32_t>::max() / (2 * kWholePercent)) return part;
    return (part * total + elapsed - 1) / elapsed;
  }

  /// The array and the volume by themselves, so that no other thing happens in it.
  boost::json::object sceneOf(const boost::json::object& array, const std::vector<GuessedMember>& order,
                              FailedMembers failed, const boost::json::object& volume) const {
    boost::json::array devices;
    std::string controller;
    for (const GuessedMember& member : order) {
      boost::json::object device = *m_devices.at(member.id);
      if (failed == FailedMembers::LOCKED_TOO && member.state == "FAILED") device["locked"] = true;
      controller = idIn(device, "controller");
      devices.emplace_back(std::move(device));
    }
    const auto drive = m_devices.find(idIn(volume, "journalingDrive"));
    if (drive != m_devices.end()) devices.emplace_back(*drive->second);
    boost::json::object scene{{"devices", std::move(devices)},
                              {"arrays", boost::json::array{array}},
                              {"volumes", boost::json::array{volume}}};
    const auto found = m_controllers.find(controller);
    if (found == m_controllers.end()) return scene;
    scene["controllers"] = boost::json::array{*found->second};
    const auto engine = m_engines.find(idIn(*found->second, "engine"));
    if (engine != m_engines.end()) scene["engines"] = boost::json::array{*engine->second};
    return scene;
  }

  Draft& m_draft;
  const Answers& m_answers;
  Index m_devices;
  Index m_controllers;
  Index m_engines;
  Index m_volumes;
  PublishedIndex m_publishedDevices;
  std::map<std::string, std::vector<const boost::json::object*>> m_volumesOfArray;
  std::map<std::string, std::uint64_t> m_targetSizes;
  std::vector<std::string> m_assumptions;
};

}  // namespace

std::vector<std::string> completeByGuesses(Draft& draft, const Answers& answers) {
  return Guessing(draft, answers).run();
}

}  // namespace simulator
