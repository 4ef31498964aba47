#ifndef MIRN_COMMON_RAID_RANGE_H
#define MIRN_COMMON_RAID_RANGE_H

#include <cstdint>

/// How much of a `Raid` its published form shows.
enum class RaidRange : std::int32_t {
  kAll = 0,    ///< Its own information and its levels.
  kInfo = 1,   ///< Its own information only.
  kLevel = 2,  ///< Its levels only.
};

#endif
