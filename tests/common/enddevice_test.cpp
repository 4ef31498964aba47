#include "enddevice.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/by_name.h"
#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

using Lines = std::vector<std::string>;

EndDevice linked(EndDevice device) {
  device.setControllerId(L"11");
  device.setRaidId(L"61");
  device.setArrayId(L"21");
  return device;
}

TEST(PublishedEndDevice, HasEveryKeyOfASataDisk) {
  EXPECT_EQ(linesOf(linked(complete<EndDevice>().build()).toServiceObject()),
            (Lines{
                "address = \"0-1-0-0\"",
                "arrayId = \"21\"",
                "controllerId = \"11\"",
                "deviceType = \"DISK\"",
                "firmware = \"F1\"",
                "freeSize = \"600\"",
                "id = \"41\"",
                "managedHotplug = true",
                "model = \"Model A\"",
                "negotiatedLinkSpeed = \"6 Gb/s\"",
                "raidId = \"61\"",
                "sectorSize.logical = \"512\"",
                "sectorSize.physical = \"4096\"",
                "serialNumber = \"SN-1\"",
                "state = \"NORMAL\"",
                "systemDisk = true",
                "totalSize = \"5000\"",
                "type = \"SATA\"",
                "usage = \"ARRAY_MEMBER\"",
                "writeCachePolicy = \"OFF\"",
            }));
}

const std::vector<std::wstring> kDiskKeys = {L"totalSize",        L"sectorSize", L"freeSize",
                                             L"writeCachePolicy", L"systemDisk", L"x8Disk"};
const std::vector<std::wstring> kLyxKeys = {L"vendorId", L"lyxDomain", L"isOrdanNVMe"};

TEST(PublishedEndDevice, HasNoSizesWhenItIsNoDisk) {
  EndDevice::Disk disk = sampleDisk();
  disk.x8Disk = X8Disk::X8_A;
  const auto form =
      complete<EndDevice>().deviceType(DeviceType::NON_DISK_STORAGE).disk(disk).build().toServiceObject();
  for (const std::wstring& key : kDiskKeys) EXPECT_FALSE(form.hasKey(key)) << key.c_str();
  EXPECT_EQ(form.asObject().size(), 14U);
  EXPECT_EQ(form.member(L"type").toString(), L"SATA");
}

TEST(PublishedEndDevice, HasSizesForEveryOtherTypeOfDevice) {
  for (const DeviceType type : {DeviceType::UNKNOWN, DeviceType::DISK, DeviceType::NON_STORAGE}) {
    const auto form = complete<EndDevice>().deviceType(type).build().toServiceObject();
    EXPECT_TRUE(form.hasKey(L"totalSize")) << static_cast<int>(type);
    EXPECT_EQ(form.asObject().size(), 19U) << static_cast<int>(type);
  }
}

TEST(PublishedEndDevice, ShowsTheX8RoleOnlyWhereThereIsOne) {
  const auto formWith = [](X8Disk role) {
    EndDevice::Disk disk = sampleDisk();
    disk.x8Disk = role;
    return complete<EndDevice>().disk(disk).build().toServiceObject();
  };
  EXPECT_EQ(formWith(X8Disk::X8_A).member(L"x8Disk").toString(), L"X8_A");
  EXPECT_EQ(formWith(X8Disk::X8_B).member(L"x8Disk").toString(), L"X8_B");
  EXPECT_FALSE(formWith(X8Disk::UNKNOWN).hasKey(L"x8Disk"));
}

TEST(PublishedEndDevice, TellsVendorAndDomainOfALyxDiskOnly) {
  for (const DiskType type : {DiskType::UNKNOWN, DiskType::SATA, DiskType::NVME, DiskType::Lyx}) {
    EndDevice::Disk disk = sampleDisk();
    disk.type = type;
    const auto form = complete<EndDevice>().disk(disk).build().toServiceObject();
    for (const std::wstring& key : kLyxKeys)
      EXPECT_EQ(form.hasKey(key), type == DiskType::Lyx) << key.c_str();
  }
}

TEST(PublishedEndDevice, OfALyxDiskHasATextANumberAndABoolean) {
  EndDevice::Disk disk = sampleDisk();
  disk.type = DiskType::Lyx;
  const auto form = complete<EndDevice>().disk(disk).build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"vendorId")), Lines{"\"0x1234\""});
  EXPECT_EQ(linesOf(form.member(L"lyxDomain")), Lines{"9"});
  EXPECT_EQ(linesOf(form.member(L"isOrdanNVMe")), Lines{"true"});
}

TEST(PublishedEndDevice, HasANullArrayOutsideOfArraysAndEmptyTextsForTheOtherLinks) {
  const auto form = complete<EndDevice>().build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"arrayId")), Lines{"null"});
  EXPECT_EQ(linesOf(form.member(L"controllerId")), Lines{"\"\""});
  EXPECT_EQ(linesOf(form.member(L"raidId")), Lines{"\"\""});
}

TEST(PublishedEndDevice, FollowsTheAdjustedHotPlugFlag) {
  EndDevice device = complete<EndDevice>().managedHotplug(true).build();
  device.setManagedHotplug(false);
  EXPECT_FALSE(device.managedHotplug());
  EXPECT_EQ(linesOf(device.toServiceObject().member(L"managedHotplug")), Lines{"false"});
}

Lines schemaOf(const wchar_t* key) { return linesOf(EndDevice::schema().member(L"properties").member(key)); }

TEST(EndDeviceSchema, TellsTheArrayMayBeNull) {
  EXPECT_EQ(schemaOf(L"arrayId"),
            (Lines{R"(description = "The array that it is part of; null outside of arrays.")",
                   R"(refersTo = "array")", R"(type[0] = "string")", R"(type[1] = "null")"}));
}

TEST(EndDeviceSchema, TellsUnderWhichConditionAKeyIsThere) {
  const std::string ofDisk = R"(condition = "deviceType is not NON_DISK_STORAGE")";
  for (const wchar_t* key : {L"totalSize", L"sectorSize", L"freeSize", L"writeCachePolicy", L"systemDisk"}) {
    EXPECT_EQ(schemaOf(key).front(), ofDisk) << key;
  }
  EXPECT_EQ(
      schemaOf(L"x8Disk").front(),
      R"(condition = "deviceType is not NON_DISK_STORAGE and the disk is half of a drive with two ports")");
  for (const wchar_t* key : {L"vendorId", L"lyxDomain", L"isOrdanNVMe"})
    EXPECT_EQ(schemaOf(key).front(), R"(condition = "type is Lyx")") << key;
}

TEST(EndDeviceSchema, NamesWhatEveryDeviceHas) {
  EXPECT_EQ(linesOf(EndDevice::schema().member(L"required")), (Lines{
                                                                  R"([0] = "id")",
                                                                  R"([1] = "controllerId")",
                                                                  R"([2] = "raidId")",
                                                                  R"([3] = "arrayId")",
                                                                  R"([4] = "address")",
                                                                  R"([5] = "deviceType")",
                                                                  R"([6] = "serialNumber")",
                                                                  R"([7] = "model")",
                                                                  R"([8] = "firmware")",
                                                                  R"([9] = "type")",
                                                                  R"([10] = "state")",
                                                                  R"([11] = "usage")",
                                                                  R"([12] = "negotiatedLinkSpeed")",
                                                                  R"([13] = "managedHotplug")",
                                                              }));
}

TEST(EndDevice, CarriesWhatItNeverPublishes) {
  const EndDevice device = complete<EndDevice>().build();
  EXPECT_EQ(device.unpublishedNumber(), 77U);
  EXPECT_EQ(device.unpublishedSize(), 88U);
  EXPECT_EQ(device.phyHandle(), 0x71U);
}

struct Vendor {
  const char* name;
  const wchar_t* given;
  const wchar_t* stored;
};

class VendorId : public testing::TestWithParam<Vendor> {};

TEST_P(VendorId, IsTrimmedAndPrefixed) {
  EXPECT_EQ(complete<EndDevice>().vendorId(GetParam().given).build().vendorId(), GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(EndDevice, VendorId,
                         testing::Values(Vendor{"Plain", L"1234", L"0x1234"},
                                         Vendor{"Blanks", L" 1234 ", L"0x1234"},
                                         Vendor{"OtherWhiteSpace", L"\t\r\n12 34\v\f", L"0x12 34"},
                                         Vendor{"Prefixed", L"0x1234", L"0x1234"},
                                         Vendor{"PrefixedAmongBlanks", L"  0x1234 ", L"0x1234"},
                                         Vendor{"PrefixInTheMiddle", L"AB0x1234", L"AB0x1234"},
                                         Vendor{"UpperCasePrefix", L"0X1234", L"0x0X1234"},
                                         Vendor{"Empty", L"", L"0x"}, Vendor{"BlanksOnly", L"   ", L"0x"}),
                         ByName());

TEST(EndDevice, KeepsTheSharedTextOfAVendorThatHasItsFormAlready) {
  const SharedText shared = L"0x8086";
  EXPECT_EQ(&complete<EndDevice>().vendorId(shared).build().vendorId(), &shared.text());
}

}  // namespace
