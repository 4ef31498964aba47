#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>
#include <vector>

#include "support/lines_of.h"
#include "vex_converter.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

const VexConverter kConverter;
constexpr std::uint32_t kNoFlags[] = {0, 2, std::numeric_limits<std::uint32_t>::max()};

template <class Record>
struct Flag {
  std::uint32_t Record::*field;
  const char* name;  ///< Under which it is true, published or not.
};

/// What is true of an object: its published members, and `unpublished` ones by their names.
template <class Object>
Lines trueOf(const Object& object, const std::vector<std::pair<const char*, bool>>& unpublished = {}) {
  const std::string ending = " = true";
  Lines names;
  for (const std::string& line : linesOf(object.toServiceObject())) {
    const std::size_t name = line.size() < ending.size() ? 0 : line.size() - ending.size();
    if (line.compare(name, std::string::npos, ending) == 0) names.push_back(line.substr(0, name));
  }
  for (const auto& [name, isTrue] : unpublished) {
    if (isTrue) names.emplace_back(name);
  }
  return names;
}

/// One flag alone at each of its numbers: 1 makes its own member true and no other, all else makes none.
template <class Record, std::size_t kCount, class TrueOf>
void expectEachAlone(const Flag<Record> (&flags)[kCount], TrueOf trueOfRecord) {
  for (const Flag<Record>& flag : flags) {
    SCOPED_TRACE(flag.name);
    Record record{};
    record.*flag.field = 1;
    EXPECT_THAT(trueOfRecord(record), ElementsAre(flag.name));
    for (const std::uint32_t number : kNoFlags) {
      record.*flag.field = number;
      EXPECT_THAT(trueOfRecord(record), IsEmpty()) << number;
    }
  }
}

TEST(RecordFlags, OfTheLibraryItself) {
  constexpr Flag<VEX_SYSTEM_INFO> kFlags[] = {
      {&VEX_SYSTEM_INFO::volSetSizeSupport, "volSetSizeSupport"},
      {&VEX_SYSTEM_INFO::passThroughSupport, "passThroughSupport"},
  };
  expectEachAlone(kFlags, [](const VEX_SYSTEM_INFO& record) { return trueOf(kConverter.toVersion(record)); });
}

TEST(RecordFlags, OfAController) {
  using Record = VEX_CONTROLLER_INFO;
  constexpr Flag<Record> kFlags[] = {
      {&Record::prebootManagerLoaded, "preboot.loaded"},
      {&Record::twoTbVolumeSupport, "preboot.twoTbVolumeSupport"},
      {&Record::twoTbDiskSupport, "preboot.twoTbDiskSupport"},
      {&Record::disableESataSpanning, "disableESataSpanning"},
      {&Record::xorSupported, "xor.supported"},
      {&Record::xorEnabled, "xor.enabled"},
      {&Record::nvsramSupported, "nvsramSupported"},
      {&Record::readPatrolSupported, "readPatrol.supported"},
      {&Record::readPatrolEnabled, "readPatrol.enabled"},
      {&Record::rohiSupported, "rohi.supported"},
      {&Record::rohiEnabled, "rohi.enabled"},
      {&Record::supportsPortLocate, "supportedFunctions.portLocate"},
      {&Record::supportsFunction420, "function420"},
      {&Record::supportsMarkAsNormal, "supportedFunctions.markAsNormal"},
      {&Record::supportsVolumeDelete, "supportedFunctions.volumeDelete"},
      {&Record::supportsArrayCreate, "supportedFunctions.arrayCreate"},
      {&Record::supportsVolumeModify, "supportedFunctions.volumeModify"},
      {&Record::supportsVolumeRename, "supportedFunctions.volumeRename"},
      {&Record::supportsAddDisksToArray, "supportedFunctions.addDisksToArray"},
      {&Record::supportsVolumeSetCachePolicy, "supportedFunctions.volumeSetCachePolicy"},
      {&Record::supportsVolumeCancelVerify, "supportedFunctions.volumeCancelVerify"},
      {&Record::supportsMarkAsSpare, "supportedFunctions.markAsSpare"},
  };
  expectEachAlone(kFlags, [](const Record& record) {
    return trueOf(kConverter.toController(record, 0, 0, boost::none),
                  {{"function420", kConverter.toFunctions(record).function420()}});
  });
}

TEST(RecordFlags, OfAnEndDevice) {
  using Record = VEX_END_DEVICE_INFO;
  constexpr Flag<Record> kFlags[] = {
      {&Record::systemDisk, "systemDisk"},
      {&Record::managedHotplug, "managedHotplug"},
      {&Record::isOrdanNVMe, "isOrdanNVMe"},
  };
  // A disk of this kind is the only one that shows all of them.
  expectEachAlone(kFlags, [](Record record) {
    record.deviceType = VEX_DEVICE_TYPE_DISK;
    record.diskType = VEX_DISK_TYPE_LYX;
    return trueOf(kConverter.toEndDevice(record, {}));
  });
}

TEST(RecordFlags, OfAVolume) {
  using Record = VEX_VOLUME_INFO;
  constexpr Flag<Record> kFlags[] = {
      {&Record::systemVolume, "systemVolume"},
      {&Record::migrationInProgress, "migration"},
      {&Record::initialized, "initialized"},
  };
  expectEachAlone(kFlags, [](const Record& record) { return trueOf(kConverter.toVolume(record)); });
}

TEST(RecordFlags, OfARaidEngine) {
  using Record = VEX_RAID_INFO;
  constexpr Flag<Record> kFlags[] = {
      {&Record::raidEnabled, "raidEnabled"},
      {&Record::globalSpareSupport, "globalSpareSupport"},
      {&Record::dedicatedSpareSupport, "dedicatedSpareSupport"},
      {&Record::createFromExistingSupport, "createFromExistingSupport"},
      {&Record::emptyArraysSupport, "emptyArraysSupport"},
  };
  expectEachAlone(kFlags, [](const Record& record) { return trueOf(kConverter.toRaid(record)); });
}

TEST(RecordFlags, OfARaidLevel) {
  using Record = VEX_RAID_LEVEL_INFO;
  constexpr Flag<Record> kFlags[] = {
      {&Record::supported, "supported"},
      {&Record::evenDiskCount, "evenDiskCount"},
      {&Record::oddDiskCount, "oddDiskCount"},
      {&Record::created, "created"},
  };
  expectEachAlone(kFlags, [](const Record& record) {
    const RaidLevelSupport level = kConverter.toRaidLevelSupport(record, VEX_RAID_LEVEL_5);
    return trueOf(level, {{"supported", level.supported()}});
  });
}

}  // namespace
