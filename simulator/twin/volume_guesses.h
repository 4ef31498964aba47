#ifndef MIRN_SIMULATOR_TWIN_VOLUME_GUESSES_H
#define MIRN_SIMULATOR_TWIN_VOLUME_GUESSES_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <string>
#include <vector>

namespace simulator {

/// A member of an array by what its published state says.
struct GuessedMember {
  std::string id;
  std::string name;  ///< For people.
  std::string state;
  std::uint64_t physicalSectorSize = 0;

  bool isUsable() const { return state == "NORMAL" || state == "SMART_EVENT_TRIGGERED"; }
};

/// What a volume may be like beneath its published state.
struct VolumeGuess {
  std::vector<std::string> stale;
  boost::json::object work;  ///< As a scenario has it; empty: none.
  std::string assumption;    ///< A sentence; empty where there is no choice.
};

/// The likeliest first. `volume` is as it is published, `targetSize` what a migration comes to, 0 for its
/// present size.
std::vector<VolumeGuess> guessesOf(const boost::json::object& volume,
                                   const std::vector<GuessedMember>& members, std::uint64_t targetSize);

/// The orders in which the members may stand, as far as that matters.
std::vector<std::vector<GuessedMember>> ordersOf(std::vector<GuessedMember> members, bool isMirroredInPairs,
                                                 std::uint64_t physicalSectorSize);

}  // namespace simulator

#endif
