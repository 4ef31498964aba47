#include "twin/volume_guesses.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "twin/conversions.h"

namespace simulator {
namespace {

struct WorkRow {
  std::string_view state;
  std::string_view kind;
};

constexpr WorkRow kWorkRows[] = {
    {"REBUILDING", "REBUILD"},        {"INITIALIZING", "INITIALIZE"},
    {"VERIFYING", "VERIFY"},          {"VERIFYING_AND_FIXING", "VERIFY_AND_FIX"},
    {"GENERAL_MIGRATION", "MIGRATE"},
};

/// The least safe first: more than is known is not to be promised.
constexpr std::string_view kSourceLevels[] = {"RAID_0", "RAID_5", "RAID_10", "RAID_1"};

constexpr std::string_view kLostStates[] = {"FAILED", "LOCKED", "NON_REDUNDANT_VOLUME_FAILED_DISK"};

std::string wordIn(const boost::json::object& volume, const char* key) {
  const boost::json::value* const found = volume.if_contains(key);
  return found != nullptr && found->is_string() ? std::string(found->get_string()) : std::string();
}

bool isMigrating(const boost::json::object& volume) {
  const boost::json::value* const found = volume.if_contains("migration");
  return found != nullptr && *found == boost::json::value(true);
}

std::string kindOf(const boost::json::object& volume) {
  if (isMigrating(volume)) return "MIGRATE";
  const std::string state = wordIn(volume, "state");
  for (const WorkRow& row : kWorkRows) {
    if (row.state == state) return std::string(row.kind);
  }
  return "";
}

bool isLost(const boost::json::object& volume) {
  const std::string state = wordIn(volume, "state");
  return std::find(std::begin(kLostStates), std::end(kLostStates), state) != std::end(kLostStates);
}

template <class Which>
std::vector<std::string> idsOf(const std::vector<GuessedMember>& members, Which which) {
  std::vector<std::string> ids;
  for (const GuessedMember& member : members) {
    if (which(member)) ids.push_back(member.id);
  }
  return ids;
}

std::vector<std::string> with(std::vector<std::string> ids, const std::string& id) {
  ids.push_back(id);
  return ids;
}

/// What a volume that does not serve may have missed before. One that serves is told by its members alone.
std::vector<std::vector<std::string>> staleSets(const boost::json::object& volume,
                                                const std::vector<GuessedMember>& members) {
  std::vector<std::vector<std::string>> sets{{}};
  if (!isLost(volume)) return sets;
  const auto locked = idsOf(members, [](const auto& member) { return member.state == "LOCKED"; });
  const auto usable = idsOf(members, [](const auto& member) { return member.isUsable(); });
  if (!locked.empty()) sets.push_back(locked);
  for (auto id = usable.rbegin(); id != usable.rend(); ++id) sets.push_back({*id});
  for (auto id = usable.rbegin(); id != usable.rend() && !locked.empty(); ++id)
    sets.push_back(with(locked, *id));
  if (usable.size() > 1) sets.push_back(usable);
  const auto failed = idsOf(members, [](const auto& member) { return member.state == "FAILED"; });
  if (!failed.empty()) sets.push_back(failed);
  return sets;
}

std::string quoted(const boost::json::object& volume) { return "\"" + wordIn(volume, "name") + "\""; }

std::vector<VolumeGuess> rebuilds(const boost::json::object& volume,
                                  const std::vector<GuessedMember>& members) {
  std::vector<VolumeGuess> guesses;
  const auto usable = idsOf(members, [](const auto& member) { return member.isUsable(); });
  // Who took another's place is younger, and stands further behind.
  for (auto member = members.rbegin(); member != members.rend(); ++member) {
    if (!member->isUsable()) continue;
    const std::string assumption = usable.size() < 2 ? ""
                                                     : "The volume " + quoted(volume) + " is rebuilt onto " +
                                                           member->name + ", which no list tells.";
    guesses.push_back({{member->id}, {{"kind", "REBUILD"}, {"disk", member->id}}, assumption});
  }
  return guesses;
}

std::vector<VolumeGuess> migrations(const boost::json::object& volume,
                                    const std::vector<GuessedMember>& members, std::uint64_t targetSize) {
  std::vector<VolumeGuess> guesses;
  for (const auto& stale : staleSets(volume, members)) {
    for (const std::string_view level : kSourceLevels) {
      boost::json::object work{{"kind", "MIGRATE"}, {"sourceLevel", level}};
      if (targetSize != 0) work["targetSize"] = targetSize;
      guesses.push_back({stale, std::move(work),
                         "The data of the volume " + quoted(volume) + " lie as " + std::string(level) +
                             " on all disks of its array while it migrates, which no list tells."});
    }
  }
  return guesses;
}

/// Moves what suits to the front, and keeps pairs together where they matter.
void bringToFront(std::vector<GuessedMember>& members, std::size_t group, std::uint64_t physicalSectorSize) {
  const auto found = std::find_if(members.begin(), members.end(), [&](const GuessedMember& member) {
    return member.physicalSectorSize == physicalSectorSize;
  });
  if (found == members.end()) return;
  const auto place = static_cast<std::size_t>(found - members.begin());
  const std::size_t first = place / group * group;
  std::swap(members[first], members[place]);
  const auto begin = members.begin();
  std::rotate(begin, begin + static_cast<std::ptrdiff_t>(first),
              begin + static_cast<std::ptrdiff_t>(std::min(first + group, members.size())));
}

}  // namespace

std::vector<VolumeGuess> guessesOf(const boost::json::object& volume,
                                   const std::vector<GuessedMember>& members, std::uint64_t targetSize) {
  const std::string kind = kindOf(volume);
  if (kind == "REBUILD") return rebuilds(volume, members);
  if (kind == "MIGRATE") return migrations(volume, members, targetSize);
  if (!kind.empty()) return {{{}, {{"kind", kind}}, ""}};
  std::vector<VolumeGuess> guesses;
  for (auto& stale : staleSets(volume, members)) {
    const std::string assumption = stale.empty() ? ""
                                                 : "Members of the volume " + quoted(volume) +
                                                       " are out of date, and which of them no list tells.";
    guesses.push_back({std::move(stale), {}, assumption});
  }
  return guesses;
}

std::vector<std::vector<GuessedMember>> ordersOf(std::vector<GuessedMember> members, bool isMirroredInPairs,
                                                 std::uint64_t physicalSectorSize) {
  std::vector<std::vector<GuessedMember>> orders{members};
  if (isMirroredInPairs) {
    std::stable_partition(members.begin(), members.end(), [](const auto& each) { return !each.isUsable(); });
    orders.push_back(members);  // what is lost is lost in whole pairs
    std::vector<GuessedMember> spread;
    for (std::size_t i = 0, j = members.size(); i < j; ++i) {
      spread.push_back(members[i]);
      if (i < --j) spread.push_back(members[j]);
    }
    orders.push_back(std::move(spread));
  }
  for (auto& order : orders) bringToFront(order, isMirroredInPairs ? 2 : 1, physicalSectorSize);
  return orders;
}

}  // namespace simulator
