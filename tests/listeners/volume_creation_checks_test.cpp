#include "listeners/creation_requests.h"
#include "listeners/order_of_checks.h"
#include "support/by_name.h"
#include "volumes_listener.h"

namespace {

/// The checks ahead of either branch.
std::vector<Fault> commonFaults() {
  return {
      unknownField(),
      unknownParameter(),
      refusedField("no level", {"raidLevel", "RAID_7"}, "INVALID_PARAMETER", "Invalid RAID level"),
      {"strip size of a mirror",
       [](Situation& s) {
         set(s.request.body, {"raidLevel", "RAID_1"});
         set(s.request.body, {"stripSize", "SIZE_64KB"});
       },
       invalid("Parameter stripSize is not supported for RAID 1")},
      {"policy of another level",
       [](Situation& s) {
         set(s.request.body, {"raidLevel", "RAID_10"});
         set(s.request.body, {"rwhPolicy", "RWH_OFF"});
       },
       refused("NOT_SUPPORTED", "RAID Write Hole policy is supported for RAID 5 only")},
      refusedField("bad source", {"source", "ROCK"}, "INVALID_PARAMETER", "Invalid source parameter"),
  };
}

std::vector<Fault> withCommonFaults(const std::vector<Fault>& faults) {
  std::vector<Fault> all = commonFaults();
  all.insert(all.end(), faults.begin(), faults.end());
  return all;
}

// Checks that both branches have.

Fault badName() {
  return refusedField("bad name", {"name", "Taken"}, "INVALID_PARAMETER", "Volume name is already in use");
}

Fault badSize() {
  return refusedField("bad size", {"size", "-1"}, "INVALID_PARAMETER", "Invalid size parameter");
}

Fault x8Disk(const std::wstring& id) {
  return {"X8 disk", [id](Situation& s) { s.session.disk(id).x8(X8Disk::X8_A); },
          refused("Mirn_INVALID_RAID_LEVEL", "X8 disks are supported for RAID 0 only")};
}

Fault badStripSize() {
  return refusedField("bad strip size", {"stripSize", "SIZE_3KB"}, "INVALID_PARAMETER", "Invalid strip size");
}

Fault noDefaultStripSize() {
  return {"no default strip size", [](Situation& s) { s.session.controllers.clear(); },
          refused("INTERNAL_ERROR", "Could not determine default strip size")};
}

/// Of the write-hole policy and its drive.
std::vector<Fault> writeHoleFaults() {
  return {
      refusedField("bad policy", {"rwhPolicy", "RWH_ON"}, "INVALID_PARAMETER",
                   "Invalid RAID Write Hole policy"),
      {"no drive",
       [](Situation& s) {
         s.request.body = without("journalingDriveId", s.request.body);
         set(s.request.body, {"rwhPolicy", "RWH_JOURNALING_DRIVE"});
       },
       refused("INVALID_PARAMETER", "Missing journaling drive identifier")},
      refusedField("bad drive", {"journalingDriveId", "6/1"}, "INVALID_PARAMETER",
                   "Invalid journaling drive identifier"),
      refusedField("unknown drive", {"journalingDriveId", "999"}, "OBJECT_NOT_FOUND",
                   "Disk identifier not found"),
      {"drive is no disk",
       [](Situation& s) {
         set(s.request.body, {"journalingDriveId", "61"});
         s.session.disk(L"61").deviceType(DeviceType::NON_STORAGE);
       },
       refused("INVALID_PARAMETER", "Disk identifier not found")},
      {"sector size of the drive",
       [](Situation& s) {
         set(s.request.body, {"journalingDriveId", "61"});
         s.session.disk(L"61").sectorSize(4096);
       },
       refused("NOT_SUPPORTED", "Journaling drive block size has to be equal to source disks block size")},
  };
}

std::vector<Fault> arrayFaults() {
  std::vector<Fault> faults = {
      invalidField("field of the other source", {"diskId", "51"}, "Argument: diskId not allowed"),
      refusedField("bad array", {"arrayId", "2/1"}, "INVALID_PARAMETER", "Invalid array identifier"),
      refusedField("unknown array", {"arrayId", "999"}, "OBJECT_NOT_FOUND", "Array identifier not found"),
      badSize(),
      refusedField("size of a second volume", {"size", "1"}, "INVALID_PARAMETER",
                   "Size of the second volume must be 0"),
      badName(),
      x8Disk(L"43"),
      badStripSize(),
      noDefaultStripSize(),
  };
  const std::vector<Fault> last = writeHoleFaults();
  faults.insert(faults.end(), last.begin(), last.end());
  return withCommonFaults(faults);
}

std::vector<Fault> disksFaults() {
  std::vector<Fault> faults = {
      invalidField("field of the other source", {"arrayId", "21"}, "Argument: arrayId not allowed"),
      badName(),
      badSize(),
      refusedField("bad disk", {"disks", list({"51", "5/2"})}, "INVALID_PARAMETER",
                   "Invalid disk identifier"),
      refusedField("unknown disk", {"disks", list({"51", "999"})}, "OBJECT_NOT_FOUND",
                   "Disk identifier not found"),
      {"no disk",
       [](Situation& s) {
         set(s.request.body, {"disks", list({"51", "52"})});
         s.session.disk(L"52").deviceType(DeviceType::UNKNOWN);
       },
       refused("INVALID_PARAMETER", "Disk identifier not found")},
      refusedField("no disks", {"disks", list({})}, "INVALID_PARAMETER", "Disks array cannot be empty"),
      x8Disk(L"53"),
      {"sector sizes", [](Situation& s) { s.session.disk(L"53").sectorSize(4096); },
       refused("NOT_SUPPORTED", "Cannot create a volume from disks with different block sizes")},
      badStripSize(),
      noDefaultStripSize(),
  };
  const std::vector<Fault> writeHole = writeHoleFaults();
  faults.insert(faults.end(), writeHole.begin(), writeHole.end());
  faults.push_back(
      refusedField("bad source disk", {"diskId", "5/1"}, "INVALID_PARAMETER", "Invalid disk identifier"));
  faults.push_back(
      refusedField("foreign source disk", {"diskId", "61"}, "OBJECT_NOT_FOUND", "Invalid disk identifier"));
  return withCommonFaults(faults);
}

INSTANTIATE_TEST_SUITE_P(
    VolumeCreation, OrderOfChecks,
    testing::Values(checksOf<VolumesListener>("InAnArray", arrangeSystem,
                                              {HttpMethod::kPost, "", arrayRequest()}, arrayFaults()),
                    checksOf<VolumesListener>("FromDisks", arrangeSystem,
                                              {HttpMethod::kPost, "", disksRequest()}, disksFaults())),
    ByName());

}  // namespace
