#include <gtest/gtest.h>

#include <utility>

#include "snapshot_reads.h"
#include "support/by_name.h"
#include "support/model_samples.h"
#include "support/read_cases.h"

namespace {

Picture pictureWith(DiskState state) {
  MirnSnapshot snapshot;
  snapshot.raids = {complete<Raid>().id(L"raid").build()};
  snapshot.controllers = {complete<Controller>().id(L"controller").build()};
  for (auto* const lists :
       {&snapshot.controllerArrays, &snapshot.controllerPorts, &snapshot.controllerVolumes}) {
    (*lists)[L"controller"];
  }
  snapshot.raidLevels[L"raid"].emplace(RaidLevel::RAID_5, complete<RaidLevelSupport>().build());
  snapshot.version = std::make_shared<Version>(complete<Version>().build());
  snapshot.volumes = {complete<Volume>().state(VolumeState::REBUILDING).build()};
  EndDevice::Disk disk = sampleDisk();
  disk.state = state;
  disk.usage = DiskUsage::PASS_THROUGH;
  snapshot.endDevices = {complete<EndDevice>().deviceType(DeviceType::DISK).disk(disk).build()};
  return std::make_shared<const IndexedSnapshot>(std::move(snapshot));
}

/// Reads whose picture is exchanged for another as soon as they have asked for one.
class ExchangedReads : public SnapshotReads {
 public:
  Picture picture() override {
    ++asked;
    return std::exchange(m_picture, pictureWith(DiskState::FAILED));
  }
  bool setLocateTimeout(std::int64_t) override { return false; }
  std::int64_t getLocateTimeout() override { return 0; }

  int asked = 0;

 private:
  Picture m_picture = pictureWith(DiskState::NORMAL);
};

class EveryRead : public testing::TestWithParam<ReadCase> {};

TEST_P(EveryRead, AsksForThePictureOnce) {
  ExchangedReads reads;
  GetParam().run(reads, {L"controller", L"raid"});
  EXPECT_EQ(reads.asked, 1);
}

INSTANTIATE_TEST_SUITE_P(Reads, EveryRead, testing::ValuesIn(readCases()), ByName());

TEST(ServiceStateOfOnePicture, KnowsNothingOfTheDisksOfTheNextOne) {
  ExchangedReads reads;
  EXPECT_EQ(reads.getServiceState(), L"NORMAL");
  EXPECT_EQ(reads.getServiceState(), L"FAILED");
}

}  // namespace
