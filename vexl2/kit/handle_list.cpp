#include "handle_list.h"

#include <algorithm>

namespace vexl2 {

void storeHandles(const std::vector<Handle>& found, VEX_HANDLE* handles, std::uint32_t& count) {
  const std::uint32_t room = handles == nullptr ? 0 : count;
  count = static_cast<std::uint32_t>(found.size());
  require(found.size() <= room, VEX_STATUS_NOT_ENOUGH_ITEMS);
  std::copy(found.begin(), found.end(), handles);
}

std::vector<Handle> handlesOf(const VEX_HANDLE* handles, std::uint32_t count) {
  require(handles != nullptr || count == 0, VEX_STATUS_INVALID_PARAMETER);
  return handles == nullptr ? std::vector<Handle>() : std::vector<Handle>(handles, handles + count);
}

}  // namespace vexl2
