#ifndef MIRN_INSIGHT_PLAN_ROOM_H
#define MIRN_INSIGHT_PLAN_ROOM_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "view/machine_view.h"

/// How large things will be, in bytes, from what the picture shows of others. The library rounds, and
/// decides: all of it is about.

namespace insight {

/// How many of the disks hold data, the others redundancy; nothing for a level that is not known.
std::optional<std::uint64_t> dataDisksOf(const std::wstring& level, std::size_t disks);

/// What each member of an array gives, once `more` have joined it.
std::uint64_t memberBytesOf(const MachineView& machine, const ArrayView& array,
                            const std::vector<std::wstring>& more = {});
/// What each of the disks gives to a new array of them.
std::uint64_t memberBytesOf(const MachineView& machine, const std::vector<std::wstring>& disks);

/// What is left of each member.
std::uint64_t freeOfMember(const ArrayView& array);

/// What a volume takes of each of its disks; nothing for a level that is not known.
std::optional<std::uint64_t> shareOf(const VolumeView& volume);

}  // namespace insight

#endif
