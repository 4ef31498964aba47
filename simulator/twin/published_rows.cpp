#include "twin/published_rows.h"

namespace simulator {

namespace c = conversions;

const PublishedRows kVersionRows = {
    {"vexVersion", "libraryVersion", c::text},
    {"volSetSizeSupport", "volSetSizeSupport", c::flag},
    {"passThroughSupport", "passThroughSupport", c::flag},
};

const PublishedRows kEngineRows = {
    {"raidId", "id", c::text},
    {"maxDisksPerArray", "maxDisksPerArray", c::number},
    {"maxRaidDisksSupported", "maxRaidDisksSupported", c::number},
    {"maxVolumesPerArray", "maxVolumesPerArray", c::number},
    {"maxVolumesPerHba", "maxVolumesPerHba", c::number},
    {"raidEnabled", "raidEnabled", c::flag},
    {"globalSpareSupport", "globalSpareSupport", c::flag},
    {"dedicatedSpareSupport", "dedicatedSpareSupport", c::flag},
    {"createFromExistingSupport", "createFromExistingSupport", c::flag},
    {"emptyArraysSupport", "emptyArraysSupport", c::flag},
};

const PublishedRows kLevelRows = {
    {"raidLevel", "level", c::text},
    {"minDisks", "minDisks", c::number},
    {"maxDisks", "maxDisks", c::number},
    {"defaultStripSize", "defaultStripSize", c::word},
    {"evenDiskCount", "evenDiskCount", c::flag},
    {"oddDiskCount", "oddDiskCount", c::flag},
};

const PublishedRows kControllerRows = {
    {"id", "id", c::text},
    {"raidId", "engine", c::reference},
    {"name", "name", c::text},
    {"type", "type", c::text},
    {"version", "version", c::text},
    {"vendorId", "vendorId", c::hexadecimal},
    {"deviceId", "deviceId", c::hexadecimal},
    {"subSystemId", "subSystemId", c::hexadecimal},
    {"subVendorId", "subVendorId", c::hexadecimal},
    {"hardwareRevisionId", "hardwareRevisionId", c::number},
    {"subClassCode", "subClassCode", c::number},
    {"preboot.managerVersion", "prebootManagerVersion", c::text},
    {"preboot.loaded", "prebootManagerLoaded", c::flag},
    {"preboot.twoTbVolumeSupport", "twoTbVolumeSupport", c::flag},
    {"preboot.twoTbDiskSupport", "twoTbDiskSupport", c::flag},
    {"disableESataSpanning", "disableESataSpanning", c::flag},
    {"xor.supported", "xorSupported", c::flag},
    {"xor.enabled", "xorEnabled", c::flag},
    {"nvsramSupported", "nvsramSupported", c::flag},
    {"supportedFunctions.portLocate", "supportsPortLocate", c::flag},
    {"supportedFunctions.markAsNormal", "supportsMarkAsNormal", c::flag},
    {"supportedFunctions.volumeDelete", "supportsVolumeDelete", c::flag},
    {"supportedFunctions.arrayCreate", "supportsArrayCreate", c::flag},
    {"supportedFunctions.volumeModify", "supportsVolumeModify", c::flag},
    {"supportedFunctions.volumeRename", "supportsVolumeRename", c::flag},
    {"supportedFunctions.addDisksToArray", "supportsAddDisksToArray", c::flag},
    {"supportedFunctions.volumeSetCachePolicy", "supportsVolumeSetCachePolicy", c::flag},
    {"supportedFunctions.volumeCancelVerify", "supportsVolumeCancelVerify", c::flag},
    {"supportedFunctions.markAsSpare", "supportsMarkAsSpare", c::flag},
    {"readPatrol.supported", "readPatrolSupported", c::flag},
    {"readPatrol.enabled", "readPatrolEnabled", c::flag},
    {"rohi.supported", "rohiSupported", c::flag},
    {"rohi.enabled", "rohiEnabled", c::flag},
};

const PublishedRows kDeviceRows = {
    {"id", "id", c::text},
    {"controllerId", "controller", c::reference},
    {"address", "address", c::address},
    {"deviceType", "deviceType", c::text},
    {"vendorId", "vendorId", c::vendor},
    {"serialNumber", "serialNumber", c::text},
    {"model", "model", c::text},
    {"firmware", "firmware", c::text},
    {"negotiatedLinkSpeed", "phys", c::phys},
    {"lyxDomain", "lyxDomain", c::number},
    {"isOrdanNVMe", "isOrdanNVMe", c::flag},
    {"managedHotplug", "managedHotplug", c::flag},
};

const PublishedRows kDiskRows = {
    {"type", "diskType", c::word},
    {"totalSize", "totalSize", c::size},
    {"sectorSize.logical", "logicalSectorSize", c::size},
    {"sectorSize.physical", "physicalSectorSize", c::size},
    {"writeCachePolicy", "writeCachePolicy", c::word},
    {"systemDisk", "systemDisk", c::flag},
    {"x8Disk", "x8Disk", c::word},
};

const PublishedRows kPortRows = {
    {"id", "id", c::text},
    {"address", "address", c::address},
    {"localDeviceId", "device", c::reference},
    {"connectedPortId", "connectedTo", c::reference},
    {"numPhys", "numPhys", c::number},
};

const PublishedRows kArrayRows = {
    {"id", "id", c::text},
    {"name", "name", c::text},
    {"writeCachePolicy", "writeCacheState", c::text},
};

const PublishedRows kVolumeRows = {
    {"id", "id", c::text},
    {"name", "name", c::text},
    {"arrayId", "array", c::reference},
    {"arrayOrdinal", "arrayOrdinal", c::number},
    {"raidLevel", "raidLevel", c::text},
    {"stripSize", "stripSize", c::word},
    {"totalSize", "size", c::size},
    {"cachePolicy", "cachePolicy", c::word},
    {"rwhPolicy", "rwhPolicy", c::word},
    {"journalingDriveId", "journalingDrive", c::reference},
    {"systemVolume", "systemVolume", c::flag},
    {"initialized", "initialized", c::flag},
    {"verify.errors", "verifyErrors", c::number},
    {"verify.badBlocks", "verifyBadBlocks", c::number},
};

const std::vector<FactRow> kDiskFactRows = {
    {"state", "OFFLINE", "state", "OFFLINE"},
    {"state", "MANUAL_OFFLINE", "state", "MANUAL_OFFLINE"},
    {"state", "CONFIG_IS_UPREV", "state", "CONFIG_IS_UPREV"},
    {"state", "INCOMPATIBLE", "state", "INCOMPATIBLE"},
    {"state", "UNSUPPORTED", "state", "UNSUPPORTED"},
    {"state", "MISSING", "presence", "ABSENT"},
    {"state", "FAILED", "failed", true},
    {"state", "LOCKED", "locked", true},
    {"state", "SMART_EVENT_TRIGGERED", "smartEvent", true},
    {"usage", "SPARE", "spare", true},
    {"usage", "OFFLINE_ARRAY", "foreignMetadata", true},
    {"usage", "ARRAY_MEMBER_READONLY_MOUNT", "readOnlyMount", true},
    {"usage", "PASS_THRU_READONLY_MOUNT", "readOnlyMount", true},
};

void take(const PublishedRows& rows, const boost::json::object& published, const std::string& place,
          boost::json::object& scenario) {
  for (const PublishedRow& row : rows) {
    const boost::json::value* const member = memberOf(published, row.published);
    if (member == nullptr) continue;
    const Converted converted = row.convert(*member, place + "." + std::string(row.published));
    if (converted) scenario[row.key] = *converted;
  }
}

void takeFacts(const boost::json::object& published, boost::json::object& scenario) {
  for (const FactRow& row : kDiskFactRows) {
    const boost::json::value* const member = published.if_contains(row.published);
    if (member != nullptr && *member == boost::json::value(row.word)) scenario[row.key] = row.fact;
  }
}

}  // namespace simulator
