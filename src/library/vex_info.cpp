#include "vex_info.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "phy_index.h"
#include "record_reading.h"
#include "vex_codes.h"
#include "vex_exception.h"

namespace {

/// Takes out the records of another name. An empty filter lets all stay.
template <class Record>
std::vector<Record> withName(const std::string& filter, std::vector<Record> records) {
  if (filter.empty()) return records;
  const auto hasOtherName = [&filter](const Record& record) {
    return std::string(record.name, std::find(std::begin(record.name), std::end(record.name), '\0')) !=
           filter;
  };
  records.erase(std::remove_if(records.begin(), records.end(), hasOtherName), records.end());
  return records;
}

template <class Record, class Convert>
auto converted(const std::vector<Record>& records, Convert convert) {
  std::vector<decltype(convert(records.front()))> objects;
  objects.reserve(records.size());
  for (const Record& record : records) objects.push_back(convert(record));
  return objects;
}

/// `idsOf` gives the ids of the objects under a controller.
template <class IdsOf>
IVexInfo::ControllerIds idsByController(const std::vector<Controller>& controllers, IdsOf idsOf) {
  IVexInfo::ControllerIds result;
  for (const Controller& controller : controllers) result[controller.id()] = idsOf(controller);
  return result;
}

template <class Object>
std::vector<SharedText> idsOf(const std::vector<Object>& objects) {
  return converted(objects, [](const Object& object) { return SharedText(object.sharedId()); });
}

}  // namespace

std::unique_ptr<IVexInfo> makeVexInfo(const std::shared_ptr<KnownTexts>& texts) {
  return std::make_unique<VexInfo>(std::make_unique<VexConverter>(texts), texts);
}

VexInfo::VexInfo(std::unique_ptr<IVexConverter> converter, std::shared_ptr<KnownTexts> texts)
    : m_converter(std::move(converter)), m_texts(std::move(texts)) {}

VexInfo::~VexInfo() {
  if (m_session == 0) return;
  try {
    VexInfo::close();
  } catch (const VexException&) {
    // Nobody is left who could do anything about it.
  }
}

void VexInfo::open() {
  if (m_session != 0) close();
  raiseUnlessSuccess(VexSessionOpen(&m_session));
}

void VexInfo::close() {
  // Success is 0, and so is "no session". After a refusal the status stands where the handle stood.
  m_session = VexSessionClose(m_session);
  raiseUnlessSuccess(m_session);
}

Version VexInfo::getVersion() const {
  VEX_SYSTEM_INFO record = {};
  raiseUnlessSuccess(VexGetSystemInfo(&record));
  return m_converter->toVersion(record);
}

std::vector<Controller> VexInfo::getControllers() const {
  return converted(readControllers(),
                   [this](const VEX_CONTROLLER_INFO& record) { return controllerOf(record); });
}

Controller VexInfo::controllerOf(const VEX_CONTROLLER_INFO& record) const {
  const DeviceCount devices = countEndDevices(record.controllerHandle, VEX_SCOPE_CONTROLLER);
  boost::optional<VEX_RAID_INFO> raid;
  if (record.raidInfoHandle != 0) raid = raidOf(record);
  return m_converter->toController(record, devices.disks, devices.all, raid);
}

VEX_RAID_INFO VexInfo::raidOf(const VEX_CONTROLLER_INFO& controller) const {
  const auto raids = readRaids();
  const auto found = std::find_if(raids.begin(), raids.end(), [&controller](const VEX_RAID_INFO& raid) {
    return raid.raidInfoHandle == controller.raidInfoHandle;
  });
  if (found == raids.end()) throw VexException(VEX_STATUS_FAILED);
  return *found;
}

std::vector<EndDevice> VexInfo::getEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                              std::string filter) const {
  const auto records = readEndDevices(handle, scope, filter);
  PhyIndex phys(readPhys(handle, scope));
  return converted(records, [&](const VEX_END_DEVICE_INFO& record) {
    return m_converter->toEndDevice(record, phys.of(record.endDeviceHandle));
  });
}

std::vector<Array> VexInfo::getArrays(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, std::string filter) const {
  return converted(readArrays(handle, scope, filter),
                   [this](const VEX_ARRAY_INFO& record) { return m_converter->toArray(record); });
}

std::vector<Volume> VexInfo::getVolumes(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, std::string filter) const {
  return converted(readVolumes(handle, scope, filter),
                   [this](const VEX_VOLUME_INFO& record) { return m_converter->toVolume(record); });
}

template <class Convert>
auto VexInfo::readPorts(VEX_HANDLE handle, VEX_SCOPE_TYPE scope, Convert convert) const {
  return readConverted<VEX_PORT_INFO>(VexGetPortInfo, m_session,
                                      listHandles(VexGetPortHandles, m_session, scope, handle), convert);
}

std::vector<Port> VexInfo::getPorts(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const {
  return readPorts(handle, scope,
                   [this](const VEX_PORT_INFO& record) { return m_converter->toPort(record); });
}

std::vector<Raid> VexInfo::getRaids() const {
  return converted(readRaids(), [this](const VEX_RAID_INFO& record) { return m_converter->toRaid(record); });
}

RaidLevelSupport VexInfo::getRaidLevel(const Raid& raid, RaidLevel level) const {
  const std::uint32_t libraryLevel = toVex(level);
  return m_converter->toRaidLevelSupport(readRaidLevel(raid.handle(), libraryLevel), libraryLevel);
}

IVexInfo::ControllerIds VexInfo::getControllerArrays(const std::vector<Controller>& controllers) const {
  return idsByController(controllers,
                         [this](const Controller& controller) { return idsOf(arraysOf(controller)); });
}

IVexInfo::ControllerIds VexInfo::getControllerPorts(const std::vector<Controller>& controllers) const {
  return idsByController(controllers, [this](const Controller& controller) { return portIdsOf(controller); });
}

IVexInfo::ControllerIds VexInfo::getControllerVolumes(const std::vector<Controller>& controllers) const {
  return idsByController(controllers,
                         [this](const Controller& controller) { return idsOf(volumesOf(controller)); });
}

IVexInfo::RaidLevels VexInfo::getRaidLevels(const std::vector<Raid>& raids) const {
  RaidLevels result;
  for (const Raid& raid : raids) {
    auto& levels = result[raid.id()];
    for (const RaidLevel level : {RaidLevel::RAID_INVALID, RaidLevel::RAID_0, RaidLevel::RAID_1,
                                  RaidLevel::RAID_5, RaidLevel::RAID_10}) {
      levels.insert_or_assign(level, getRaidLevel(raid, level));
    }
  }
  return result;
}

std::vector<Array> VexInfo::arraysOf(const Controller& controller) const {
  return getArrays(controller.handle(), VEX_SCOPE_CONTROLLER, "");
}

std::vector<Volume> VexInfo::volumesOf(const Controller& controller) const {
  return getVolumes(controller.handle(), VEX_SCOPE_CONTROLLER, "");
}

/// Nothing else of a port's record can be wrong, so that it takes no whole port to tell its id.
std::vector<SharedText> VexInfo::portIdsOf(const Controller& controller) const {
  return readPorts(controller.handle(), VEX_SCOPE_CONTROLLER_PORTS,
                   [this](const VEX_PORT_INFO& record) { return m_texts->ids.of(record.uniqueId); });
}

std::vector<VEX_CONTROLLER_INFO> VexInfo::readControllers() const {
  return readRecords(VexGetControllerInfo, m_session,
                     listHandles(VexGetControllerHandles, m_session, VEX_SCOPE_SYSTEM, 0));
}

std::vector<VEX_END_DEVICE_INFO> VexInfo::readEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                                         std::string filter) const {
  auto records = readRecords(VexGetEndDeviceInfo, m_session,
                             listHandles(VexGetEndDeviceHandles, m_session, scope, handle));
  // Unlike arrays and volumes, on purpose: a device has no name that could pass a filter.
  if (!filter.empty()) records.clear();
  return records;
}

VexInfo::DeviceCount VexInfo::countEndDevices(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const {
  const auto handles = listHandles(VexGetEndDeviceHandles, m_session, scope, handle);
  DeviceCount count{0, handles.size()};
  readEachRecord<VEX_END_DEVICE_INFO>(VexGetEndDeviceInfo, m_session, handles, [&](const auto& record) {
    if (record.deviceType == VEX_DEVICE_TYPE_DISK) ++count.disks;
  });
  return count;
}

std::vector<DevicePhy> VexInfo::readPhys(VEX_HANDLE handle, VEX_SCOPE_TYPE scope) const {
  return readConverted<VEX_PHY_INFO>(
      VexGetPhyInfo, m_session, listHandles(VexGetPhyHandles, m_session, scope, handle),
      [](const auto& record) {
        return DevicePhy{record.phyHandle, record.endDeviceHandle, record.negotiatedLinkSpeed};
      });
}

std::vector<VEX_ARRAY_INFO> VexInfo::readArrays(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                                std::string filter) const {
  return withName(filter, readRecords(VexGetArrayInfo, m_session,
                                      listHandles(VexGetArrayHandles, m_session, scope, handle)));
}

std::vector<VEX_VOLUME_INFO> VexInfo::readVolumes(VEX_HANDLE handle, VEX_SCOPE_TYPE scope,
                                                  std::string filter) const {
  return withName(filter, readRecords(VexGetVolumeInfo, m_session,
                                      listHandles(VexGetVolumeHandles, m_session, scope, handle)));
}

std::vector<VEX_RAID_INFO> VexInfo::readRaids() const {
  return readRecords(VexGetRaidInfo, m_session,
                     listHandles([this](VEX_HANDLE* handles, std::uint32_t* count) {
                       return VexGetRaidInfoHandles(m_session, handles, count);
                     }));
}

VEX_RAID_LEVEL_INFO VexInfo::readRaidLevel(VEX_HANDLE raidInfoHandle, std::uint32_t libraryLevel) const {
  VEX_RAID_LEVEL_INFO record = {};
  raiseUnlessSuccess(VexGetRaidLevelInfo(m_session, raidInfoHandle, libraryLevel, &record));
  return record;
}
