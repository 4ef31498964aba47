#include "listeners/order_of_checks.h"
#include "listeners/volumes_listener_fixture.h"
#include "support/by_name.h"

namespace {

Fault unknownVolume(const std::string& rest) {
  return unknownObject(rest, "OBJECT_NOT_FOUND", "Volume identifier not found");
}

std::vector<Fault> rebuildFaults() {
  return {
      unknownField(),
      unknownParameter(),
      refusedField("bad disk id", {"diskId", "4/3"}, "INVALID_PARAMETER", "Invalid disk identifier"),
      unknownVolume("/rebuild"),
      refusedField("unknown disk", {"diskId", "999"}, "OBJECT_NOT_FOUND", "Disk identifier not found"),
      {"no disk", [](Situation& s) { s.session.disk(L"43").deviceType(DeviceType::NON_DISK_STORAGE); },
       refused("INVALID_PARAMETER", "Disk identifier not found")},
      {"X8 disk", [](Situation& s) { s.session.disk(L"43").x8(X8Disk::X8_A); },
       refused("NOT_SUPPORTED", "Rebuild using X8 disks is not supported")},
      {"sector size", [](Situation& s) { s.session.disk(L"43").sectorSize(4096); },
       refused("NOT_SUPPORTED",
               "Cannot rebuild the volume using a disk with block size different from source disks")},
      {"not degraded", [](Situation& s) { s.session.volume(L"7").state(VolumeState::NORMAL); },
       refused("NOT_SUPPORTED", "Rebuild operation can be performed only on degraded volume")},
  };
}

std::vector<Fault> verifyFaults() {
  return {
      invalidField("bad repair", {"repair", "yes"}, "Argument: repair not a boolean type"),
      unknownParameter(),
      unknownVolume("/verify"),
      refusedField("bad action", {"action", "start"}, "INVALID_PARAMETER", "Invalid action parameter"),
      {"no repair", [](Situation& s) { s.request.body = without("repair", s.request.body); },
       refused("INVALID_PARAMETER", "Repair parameter missing")},
  };
}

std::vector<Fault> sizeFaults() {
  return {
      unknownField(),
      unknownParameter(),
      unknownVolume("/size"),
      refusedField("bad size", {"size", "-1"}, "INVALID_PARAMETER", "Invalid size parameter"),
  };
}

std::vector<Fault> cachePolicyFaults() {
  return {
      unknownField(),
      unknownParameter(),
      unknownVolume("/cachepolicy"),
      {"no controller", [](Situation& s) { s.session.controllerVolumes[L"12"].clear(); },
       refused("OBJECT_NOT_FOUND", "Controller identifier not found")},
      {"not supported", [](Situation& s) { s.session.controller(L"12").setsCachePolicy(false); },
       refused("NOT_SUPPORTED", "This volume does not support cache policy")},
      refusedField("bad policy", {"cachePolicy", "SOMETIMES"}, "INVALID_PARAMETER", "Invalid cache policy"),
  };
}

std::vector<Fault> nameFaults() {
  return {
      unknownField(),
      unknownParameter(),
      unknownVolume("/name"),
      refusedField("bad name", {"name", "a\\b"}, "INVALID_PARAMETER",
                   "Volume name contains a forbidden character"),
  };
}

INSTANTIATE_TEST_SUITE_P(
    Volumes, OrderOfChecks,
    testing::Values(
        checksOf<VolumesListener>("List", arrangeVolume, {HttpMethod::kGet, ""}, {unknownParameter()}),
        checksOf<VolumesListener>("MarkNormal", arrangeVolume, {HttpMethod::kPut, "7/marknormal"},
                                  {unexpectedBody(), unknownParameter(), unknownVolume("/marknormal")}),
        checksOf<VolumesListener>("Rebuild", arrangeVolume,
                                  {HttpMethod::kPut, "7/rebuild", body({{"diskId", "43"}})}, rebuildFaults()),
        checksOf<VolumesListener>("Init", arrangeVolume, {HttpMethod::kPut, "7/init"},
                                  {unexpectedBody(), unknownParameter(), unknownVolume("/init")}),
        checksOf<VolumesListener>(
            "Verify", arrangeVolume,
            {HttpMethod::kPut, "7/verify", body({{"action", "START"}, {"repair", false}})}, verifyFaults()),
        checksOf<VolumesListener>("Size", arrangeVolume, {HttpMethod::kPut, "7/size", body({{"size", "1"}})},
                                  sizeFaults()),
        checksOf<VolumesListener>("CachePolicy", arrangeVolume,
                                  {HttpMethod::kPut, "7/cachepolicy", body({{"cachePolicy", "OFF"}})},
                                  cachePolicyFaults()),
        checksOf<VolumesListener>("Name", arrangeVolume,
                                  {HttpMethod::kPut, "7/name", body({{"name", "Archive"}})}, nameFaults()),
        checksOf<VolumesListener>("Delete", arrangeVolume, {HttpMethod::kDelete, "7"},
                                  {unknownParameter(), unknownVolume("")})),
    ByName());

}  // namespace
