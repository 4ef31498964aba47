#include "twin/published_words.h"

#include "engine/work.h"
#include "model/disk_role.h"
#include "model/redundancy.h"

namespace simulator {

template <>
const std::initializer_list<Word<VolumeState>>& wordsOf<VolumeState>() {
  static const std::initializer_list<Word<VolumeState>> kWords = {
      {VolumeState::NORMAL, "NORMAL"},
      {VolumeState::DEGRADED, "DEGRADED"},
      {VolumeState::FAILED, "FAILED"},
      {VolumeState::INITIALIZING, "INITIALIZING"},
      {VolumeState::REBUILDING, "REBUILDING"},
      {VolumeState::VERIFYING, "VERIFYING"},
      {VolumeState::VERIFYING_AND_FIXING, "VERIFYING_AND_FIXING"},
      {VolumeState::GENERAL_MIGRATION, "GENERAL_MIGRATION"},
      {VolumeState::LOCKED, "LOCKED"},
      {VolumeState::NON_REDUNDANT_VOLUME_FAILED_DISK, "NON_REDUNDANT_VOLUME_FAILED_DISK"},
  };
  return kWords;
}

template <>
const std::initializer_list<Word<DiskUsage>>& wordsOf<DiskUsage>() {
  static const std::initializer_list<Word<DiskUsage>> kWords = {
      {DiskUsage::ARRAY_MEMBER, "ARRAY_MEMBER"},
      {DiskUsage::PASS_THROUGH, "PASS_THROUGH"},
      {DiskUsage::OFFLINE_ARRAY, "OFFLINE_ARRAY"},
      {DiskUsage::SPARE, "SPARE"},
      {DiskUsage::ARRAY_MEMBER_READONLY_MOUNT, "ARRAY_MEMBER_READONLY_MOUNT"},
      {DiskUsage::PASS_THRU_READONLY_MOUNT, "PASS_THRU_READONLY_MOUNT"},
      {DiskUsage::JOURNALING_DRIVE, "JOURNALING_DRIVE"},
  };
  return kWords;
}

std::string_view publishedState(const Machine& machine, const Volume& volume) {
  return toWord(stateOf(machine, volume));
}

std::string_view publishedState(const EndDevice& disk) {
  const DiskState state = stateOf(disk);
  return state == DiskState::MISSING ? "MISSING" : toWord(state);
}

std::uint64_t publishedProgress(const Machine& machine, const Volume& volume) {
  return std::uint64_t{progressOf(machine, volume)} * 100 / 0xFFFFFFFFU;
}

}  // namespace simulator
