#include "simulator/workbench_fixture.h"

// Blank disks come into bays.

namespace {

constexpr VEX_STATUS kOk = VEX_STATUS_SUCCESS;
constexpr std::uint64_t kMiB = 1 << 20;

class Bay : public Workbench {
 protected:
  /// Returns the id of the disk that came into the bay of `former`.
  static std::string replace(const char* former, std::uint64_t size = 0, std::uint32_t sector = 0,
                             const char* model = nullptr) {
    char id[64] = "";
    EXPECT_EQ(VexSimPullDisk(former), kOk);
    EXPECT_EQ(VexSimInsertBlankDisk(former, size, sector, model, id, sizeof(id)), kOk);
    return id;
  }
};

TEST_F(Bay, TakesABlankDiskLikeTheFormerOne) {
  const VEX_HANDLE phy = phyOf("a0");
  const std::string id = replace("a0");
  EXPECT_EQ(disk(id).totalSize, 1008 * kMiB);
  EXPECT_EQ(disk(id).diskUsage, VEX_DISK_USAGE_PASS_THROUGH);
  EXPECT_STREQ(disk(id).serialNumber, id.c_str());
  EXPECT_EQ(disk("a0").diskState, VEX_DISK_STATE_MISSING);
  EXPECT_EQ(phyOf(id), phy) << "the link of the bay is that of the new disk";
  EXPECT_EQ(port("port a0").localDeviceHandle, diskHandle(id));
  EXPECT_EQ(stateOf("mirror"), VEX_VOLUME_STATE_DEGRADED);
}

TEST_F(Bay, TakesADiskOfAnySizeSectorsAndModel) {
  const std::string id = replace("a7", 5000 * kMiB, 4096, "Large");
  EXPECT_EQ(disk(id).totalSize, 5000 * kMiB);
  EXPECT_EQ(disk(id).logicalSectorSize, 4096U);
  EXPECT_EQ(disk(id).physicalSectorSize, 4096U);
  EXPECT_STREQ(disk(id).model, "Large");
}

TEST_F(Bay, ABlankDiskIsRebuiltOntoOnHotInsert) {
  ASSERT_EQ(VexROHISetState(controller("A").controllerHandle, 1), kOk);
  const std::string id = replace("a2");
  EXPECT_EQ(disk(id).arrayHandle, arrayHandle("five"));
  EXPECT_EQ(stateOf("five"), VEX_VOLUME_STATE_REBUILDING);
}

TEST_F(Bay, HoldsOneDiskAtATime) {
  EXPECT_EQ(VexSimInsertBlankDisk("a0", 0, 0, nullptr, nullptr, 0), VEX_STATUS_INVALID_STATE);
  const std::string id = replace("a0");
  EXPECT_EQ(VexSimInsertDisk("a0"), VEX_STATUS_INVALID_STATE);
  EXPECT_EQ(VexSimInsertBlankDisk("a0", 0, 0, nullptr, nullptr, 0), VEX_STATUS_INVALID_STATE);
  ASSERT_EQ(VexSimPullDisk(id.c_str()), kOk);
  ASSERT_EQ(VexSimInsertDisk("a0"), kOk);
  EXPECT_NE(phyOf("a0"), 0U);
  EXPECT_EQ(port("port a0").localDeviceHandle, diskHandle("a0"));
  EXPECT_EQ(stateOf("mirror"), VEX_VOLUME_STATE_REBUILDING);
}

TEST_F(Bay, WithoutHotPlugIsLookedAtByARescan) {
  const std::string id = replace("sectors");
  EXPECT_EQ(diskHandle(id), 0U);
  ASSERT_EQ(VexRescan(), kOk);
  EXPECT_NE(diskHandle(id), 0U);
}

TEST_F(Bay, IsKept) {
  const std::string id = replace("a0");
  const std::string kept = machine();
  ASSERT_EQ(VexSimLoadText(kept.c_str()), kOk) << lastError();
  EXPECT_EQ(machine(), kept);
  EXPECT_EQ(VexSimInsertDisk("a0"), VEX_STATUS_INVALID_STATE);
}

TEST_F(Bay, TakesNoDiskThatCannotBe) {
  ASSERT_EQ(VexSimPullDisk("a0"), kOk);
  ASSERT_EQ(VexSimPullDisk("optical"), kOk);
  const std::string before = machine();
  EXPECT_EQ(VexSimInsertBlankDisk(nullptr, 0, 0, nullptr, nullptr, 0), VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(VexSimInsertBlankDisk("nobody", 0, 0, nullptr, nullptr, 0), VEX_STATUS_INVALID_HANDLE);
  EXPECT_EQ(VexSimInsertBlankDisk("optical", 0, 0, nullptr, nullptr, 0), VEX_STATUS_INVALID_DISK);
  EXPECT_EQ(VexSimInsertBlankDisk("a0", 8 * kMiB, 0, nullptr, nullptr, 0), VEX_STATUS_DISK_TOO_SMALL);
  EXPECT_EQ(VexSimInsertBlankDisk("a0", 0, 511, nullptr, nullptr, 0), VEX_STATUS_INVALID_SECTOR_SIZE);
  EXPECT_EQ(VexSimInsertBlankDisk("a0", 0, 0, "41 letters are one letter more than fit in", nullptr, 0),
            VEX_STATUS_INVALID_PARAMETER);
  EXPECT_EQ(machine(), before);
}

}  // namespace
