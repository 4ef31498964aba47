#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "enddevice.h"
#include "side_by_side.h"
#include "volume.h"

namespace {

using ovra::data_transfer::ServiceObject;

Volume volumeOf(std::size_t number) {
  const auto handle = static_cast<VEX_HANDLE>(number);
  Volume volume = Volume::Builder()
                      .id(std::to_wstring(5815940470145189505U + number))
                      .handle(handle)
                      .arrayHandle(handle)
                      .arrayOrdinal(0)
                      .name(L"Volume" + std::to_wstring(number))
                      .state(VolumeState::NORMAL)
                      .raidLevel(RaidLevel::RAID_5)
                      .totalSize(4000000000000U)
                      .stripSize(StripSize::SIZE_64KB)
                      .numDisks(4)
                      .migrProgress(0)
                      .cachePolicy(CachePolicy::OFF)
                      .systemVolume(false)
                      .migration(false)
                      .initialized(true)
                      .verify({0, 0})
                      .sectorSize({512, 4096})
                      .journalingDriveHandle(0)
                      .rwhPolicy(RwhPolicy::RWH_OFF)
                      .build();
  volume.setArrayId(std::to_wstring(7815940470145189505U + number));
  return volume;
}

EndDevice deviceOf(std::size_t number) {
  const auto handle = static_cast<VEX_HANDLE>(number);
  EndDevice::Disk disk;
  disk.type = DiskType::NVME;
  disk.state = DiskState::NORMAL;
  disk.usage = DiskUsage::ARRAY_MEMBER;
  disk.totalSize = 4000000000000U;
  disk.logicalSectorSize = 512;
  disk.physicalSectorSize = 4096;
  EndDevice device = EndDevice::Builder()
                         .id(std::to_wstring(5815940470145189505U + number))
                         .handle(handle)
                         .controllerHandle(1)
                         .raidHandle(2)
                         .arrayHandle(3)
                         .phyHandle(handle)
                         .address(L"0-1-0-" + std::to_wstring(number))
                         .deviceType(DeviceType::DISK)
                         .unpublishedNumber(0)
                         .vendorId(L"8086")
                         .serialNumber(L"SERIAL" + std::to_wstring(number))
                         .model(L"Model of a disk")
                         .firmware(L"FW01")
                         .disk(disk)
                         .unpublishedSize(0)
                         .negotiatedLinkSpeed(LinkSpeed::GBPS_6)
                         .lyxDomain(0)
                         .isOrdanNVMe(false)
                         .managedHotplug(true)
                         .build();
  device.setControllerId(L"1815940470145189505");
  device.setRaidId(L"2815940470145189505");
  device.setArrayId(L"3815940470145189505");
  return device;
}

template <class Make>
auto listOf(std::size_t count, const Make& make) {
  std::vector<decltype(make(0))> list;
  for (std::size_t number = 0; number < count; ++number) list.push_back(make(number));
  return list;
}

template <class Model>
ServiceObject formsOf(const std::vector<Model>& models) {
  ServiceObject list = ServiceObject::array();
  for (std::size_t i = 0; i < models.size(); ++i) list.at(i) = models[i].toServiceObject();
  return list;
}

/// Floor: to copy the finished forms.
template <class Model>
void publish(benchmark::State& state, const std::vector<Model>& models) {
  const ServiceObject forms = formsOf(models);
  runBesideFloor(
      state, [&] { benchmark::DoNotOptimize(formsOf(models)); },
      [&] { benchmark::DoNotOptimize(ServiceObject(forms)); });
}

void publishVolumes(benchmark::State& state) { publish(state, listOf(24, volumeOf)); }
void publishDevices(benchmark::State& state) { publish(state, listOf(1000, deviceOf)); }

/// Two pictures that are the same: what a quiet machine costs at each refresh. Floor: to compare the
/// ids alone.
void compareDevices(benchmark::State& state) {
  const auto before = listOf(10000, deviceOf);
  const auto now = listOf(10000, deviceOf);
  const auto allSame = [&](const auto& same) {
    bool isSame = true;
    for (std::size_t i = 0; i < before.size(); ++i) isSame = same(before[i], now[i]) && isSame;
    benchmark::DoNotOptimize(isSame);
  };
  runBesideFloor(
      state, [&] { allSame([](const auto& one, const auto& other) { return sameForm(one, other); }); },
      [&] { allSame([](const auto& one, const auto& other) { return one.id() == other.id(); }); });
  state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * before.size()));
}

BENCHMARK(publishVolumes)->UseManualTime();
BENCHMARK(publishDevices)->UseManualTime();
BENCHMARK(compareDevices)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
