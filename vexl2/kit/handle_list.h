#ifndef MIRN_VEXL2_KIT_HANDLE_LIST_H
#define MIRN_VEXL2_KIT_HANDLE_LIST_H

#include <cstdint>
#include <vector>

#include "refusal.h"

/// Lists of handles as they cross the library's boundary.
namespace vexl2 {

/// Answers an enumeration: stores the handles when `handles` has room for `count` of them or more. `count`
/// becomes their number either way; where they do not fit, which null never does unless there are none, it is
/// refused with 13, and the caller asks again with more room.
void storeHandles(const std::vector<Handle>& found, VEX_HANDLE* handles, std::uint32_t& count);

/// The handles of an argument. Null with a count is refused with 2.
std::vector<Handle> handlesOf(const VEX_HANDLE* handles, std::uint32_t count);

}  // namespace vexl2

#endif
