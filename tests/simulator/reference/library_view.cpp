#include "simulator/reference/library_view.h"

#include <stdexcept>

#include "vexl2_simulator.h"

namespace reference {
namespace {

using List = decltype(&VexGetVolumeHandles);

void must(Status status) {
  if (status != 0) throw std::runtime_error("reading answers " + std::to_string(status));
}

template <class Info>
std::vector<Info> readAll(Handle session, List list, VEX_STATUS (*read)(VEX_HANDLE, VEX_HANDLE, Info*)) {
  std::vector<VEX_HANDLE> handles(1000);
  auto count = static_cast<std::uint32_t>(handles.size());
  must(list(session, 0, 0, handles.data(), &count));
  std::vector<Info> records;
  for (std::uint32_t i = 0; i < count; ++i) must(read(session, handles[i], &records.emplace_back(Info{})));
  return records;
}

}  // namespace

std::vector<VEX_CONTROLLER_INFO> LibraryView::controllers() const {
  return readAll(m_session, VexGetControllerHandles, VexGetControllerInfo);
}

std::vector<VEX_END_DEVICE_INFO> LibraryView::disks() const {
  return readAll(m_session, VexGetEndDeviceHandles, VexGetEndDeviceInfo);
}

std::vector<VEX_PHY_INFO> LibraryView::phys() const {
  return readAll(m_session, VexGetPhyHandles, VexGetPhyInfo);
}

std::vector<VEX_PORT_INFO> LibraryView::ports() const {
  return readAll(m_session, VexGetPortHandles, VexGetPortInfo);
}

std::vector<VEX_ARRAY_INFO> LibraryView::arrays() const {
  return readAll(m_session, VexGetArrayHandles, VexGetArrayInfo);
}

std::vector<VEX_VOLUME_INFO> LibraryView::volumes() const {
  return readAll(m_session, VexGetVolumeHandles, VexGetVolumeInfo);
}

bool LibraryView::isLevelInUse(Handle engine, std::uint32_t level) const {
  VEX_RAID_LEVEL_INFO info = {};
  must(VexGetRaidLevelInfo(m_session, engine, level, &info));
  return info.created == 1;
}

std::string LibraryView::machine() {
  std::uint32_t size = 0;
  VexSimSaveText(nullptr, &size);
  std::string text(size, '\0');
  must(VexSimSaveText(text.data(), &size));
  return text;
}

Wish cut(Wish wish) {
  wish.name = wish.name.substr(0, sizeof(VEX_CREATE_VOLUME_PARAMS::name));
  return wish;
}

}  // namespace reference
