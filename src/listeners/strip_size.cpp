#include "strip_size.h"

#include <algorithm>
#include <boost/optional.hpp>

#include "listener_steps.h"
#include "messages.h"

namespace {

boost::optional<Controller> controllerById(IMirnSession& session, const std::wstring& id) {
  for (const Controller& controller : session.getControllers()) {
    if (controller.id() == id) return controller;
  }
  return {};
}

/// When the engine names none.
StripSize fallbackStripSize(RaidLevel level) {
  switch (level) {
    case RaidLevel::RAID_0:
      return StripSize::SIZE_128KB;
    case RaidLevel::RAID_1:
    case RaidLevel::RAID_5:
    case RaidLevel::RAID_10:
      return StripSize::SIZE_64KB;
    default:
      return StripSize::SIZE_UNKNOWN;
  }
}

StripSize engineStripSize(IMirnSession& session, const std::wstring& raidId, RaidLevel level) {
  const StripSize fallback = fallbackStripSize(level);
  const std::vector<Raid> raids = session.getRaids();
  const bool known =
      std::any_of(raids.begin(), raids.end(), [&](const Raid& raid) { return raid.id() == raidId; });
  if (!known) return fallback;
  return session.getRaidLevel(raidId, level).defaultStripSize().value_or(fallback);
}

/// The second RAID 5 volume of an array follows the first.
boost::optional<StripSize> stripSizeOfRaid5In(IMirnSession& session, const Array& array) {
  for (const Volume& volume : session.getArrayVolumes(array.id())) {
    if (volume.raidLevel() == RaidLevel::RAID_5) return volume.stripSize();
  }
  return {};
}

StripSize lyxRaid5StripSize(std::size_t disks) {
  const auto found = kRaid5DefaultStripByDisks.find(static_cast<StripSizeByDisks::key_type>(disks));
  return found == kRaid5DefaultStripByDisks.end() ? StripSize::SIZE_UNKNOWN : found->second;
}

}  // namespace

StripSize defaultStripSize(IMirnSession& session, RaidLevel level, const std::vector<EndDevice>& disks,
                           const Array* array) {
  if (disks.empty()) return StripSize::SIZE_UNKNOWN;
  const boost::optional<Controller> controller = controllerById(session, disks.front().controllerId());
  if (!controller) return StripSize::SIZE_UNKNOWN;
  if (controller->type() != ControllerType::Lyx || level != RaidLevel::RAID_5) {
    return engineStripSize(session, controller->raidId(), level);
  }
  if (array) {
    if (const auto ofFirst = stripSizeOfRaid5In(session, *array)) return *ofFirst;
  }
  return lyxRaid5StripSize(disks.size());
}

StripSize requiredDefaultStripSize(IMirnSession& session, RaidLevel level,
                                   const std::vector<EndDevice>& disks, const Array* array) {
  const StripSize stripSize = defaultStripSize(session, level, disks, array);
  requireThat(stripSize != StripSize::SIZE_UNKNOWN, kErrorInternal, kMsgNoDefaultStripSize);
  return stripSize;
}

bool isLyxController(IMirnSession& session, const std::wstring& controllerId) {
  const boost::optional<Controller> controller = controllerById(session, controllerId);
  return controller && controller->type() == ControllerType::Lyx;
}
