#include "model/links.h"

#include <algorithm>
#include <utility>

#include "model/disk_role.h"

namespace simulator {
namespace {

void insertSorted(std::vector<Handle>& handles, Handle handle) {
  handles.insert(std::lower_bound(handles.begin(), handles.end(), handle), handle);
}

void erase(std::vector<Handle>& handles, Handle handle) {
  handles.erase(std::remove(handles.begin(), handles.end(), handle), handles.end());
}

void takeWriteCache(const Array& array, EndDevice& disk) {
  if (array.writeCache != WriteCache::UNKNOWN) disk.writeCache = array.writeCache;
}

/// What cannot be written keeps the metadata of the array that it was in.
void release(EndDevice& disk) {
  disk.array = 0;
  disk.foreignMetadata = !isUsable(disk);
}

void claim(EndDevice& disk, Handle array) {
  disk.array = array;
  disk.spare = false;
  disk.spareFor = 0;
  disk.foreignMetadata = false;
}

}  // namespace

Handle takeHandle(Machine& machine) { return machine.nextHandle++; }

EndDevice& addDevice(Machine& machine, EndDevice device) {
  insertSorted(machine.controllers.at(device.controller).devices, device.handle);
  for (const Phy& phy : device.phys) machine.phyOwner.add(phy.handle, device.handle);
  const Handle handle = device.handle;
  return machine.devices.add(handle, std::move(device));
}

void handOver(Machine& machine, EndDevice& from, EndDevice& to) {
  for (const Phy& phy : from.phys) machine.phyOwner.at(phy.handle) = to.handle;
  to.phys.insert(to.phys.end(), from.phys.begin(), from.phys.end());
  from.phys.clear();
  for (const auto& entry : std::as_const(machine).ports) {
    if (entry.second.device == from.handle) machine.ports.at(entry.first).device = to.handle;
  }
}

Array& addArray(Machine& machine, Array array) {
  const Handle handle = array.handle;
  Array& added = machine.arrays.add(handle, std::move(array));
  for (const Handle disk : added.disks) claim(machine.devices.at(disk), handle);
  added.controller = machine.devices.at(added.disks.front()).controller;
  insertSorted(machine.controllers.at(added.controller).arrays, handle);
  return added;
}

void removeArray(Machine& machine, Handle handle) {
  const Array& array = machine.arrays.at(handle);
  for (const Handle disk : array.disks) release(machine.devices.at(disk));
  erase(machine.controllers.at(array.controller).arrays, handle);
  for (const auto& entry : std::as_const(machine).devices) {
    if (entry.second.spareFor != handle) continue;
    EndDevice& disk = machine.devices.at(entry.first);
    disk.spare = false;
    disk.spareFor = 0;
  }
  machine.arrays.remove(handle);
}

void joinArray(Machine&, Array& array, EndDevice& disk) {
  array.disks.push_back(disk.handle);
  claim(disk, array.handle);
  takeWriteCache(array, disk);
}

void leaveArray(Machine& machine, Array& array, EndDevice& disk) {
  erase(array.disks, disk.handle);
  release(disk);
  const auto serves = [&](Handle member) { return isUsable(machine.devices.at(member)); };
  if (std::none_of(array.disks.begin(), array.disks.end(), serves)) removeArray(machine, array.handle);
}

void replaceMember(Machine& machine, Array& array, EndDevice& oldDisk, EndDevice& newDisk) {
  std::replace(array.disks.begin(), array.disks.end(), oldDisk.handle, newDisk.handle);
  claim(newDisk, array.handle);
  takeWriteCache(array, newDisk);
  newDisk.systemDisk = oldDisk.systemDisk;
  oldDisk.systemDisk = false;
  oldDisk.array = 0;
  oldDisk.foreignMetadata = true;
  for (const Handle handle : array.volumes) {
    Volume& volume = machine.volumes.at(handle);
    bringUpToDate(volume, oldDisk.handle);
    volume.stale.push_back(newDisk.handle);
    volume.blank.push_back(newDisk.handle);
    if (!volume.work) continue;
    auto& sources = volume.work->sourceDisks;
    std::replace(sources.begin(), sources.end(), oldDisk.handle, newDisk.handle);
    erase(volume.work->catchUp, oldDisk.handle);
  }
}

void bringUpToDate(Volume& volume, Handle disk) {
  erase(volume.stale, disk);
  erase(volume.blank, disk);
}

Volume& addVolume(Machine& machine, Volume volume) {
  const Handle handle = volume.handle;
  const Handle drive = volume.journalingDrive;
  volume.journalingDrive = 0;
  Volume& added = machine.volumes.add(handle, std::move(volume));
  setJournalingDrive(machine, added, drive);
  auto& volumes = machine.arrays.at(added.array).volumes;
  const auto isBefore = [&](Handle other) { return machine.volumes.at(other).ordinal < added.ordinal; };
  volumes.insert(std::partition_point(volumes.begin(), volumes.end(), isBefore), added.handle);
  return added;
}

void removeVolume(Machine& machine, Handle handle) {
  Volume& volume = machine.volumes.at(handle);
  setJournalingDrive(machine, volume, 0);
  erase(machine.arrays.at(volume.array).volumes, handle);
  machine.volumes.remove(handle);
}

void setJournalingDrive(Machine& machine, Volume& volume, Handle drive) {
  if (volume.journalingDrive != 0) --machine.devices.at(volume.journalingDrive).journalUsers;
  volume.journalingDrive = drive;
  if (drive != 0) ++machine.devices.at(drive).journalUsers;
}

}  // namespace simulator
