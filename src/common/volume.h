#ifndef MIRN_COMMON_VOLUME_H
#define MIRN_COMMON_VOLUME_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "builder.h"
#include "enumerations.h"
#include "handle.h"
#include "ServiceObject.h"

/// A RAID volume on an array. Immutable once built, but for the links that the session fills in.
class Volume {
 public:
  class Builder;

  /// Raised by the build step for a forgotten field.
  class InitializationException : public std::invalid_argument {
   public:
    using std::invalid_argument::invalid_argument;
  };

  /// What verification has counted.
  struct Verify {
    std::uint32_t errors = 0;
    std::uint32_t badBlocks = 0;
  };

  /// Bytes.
  struct SectorSize {
    std::uint32_t logical = 0;
    std::uint32_t physical = 0;
  };

  const std::wstring& id() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  const std::wstring& arrayId() const { return m_arrayId; }
  VEX_HANDLE arrayHandle() const { return m_arrayHandle; }
  std::uint32_t arrayOrdinal() const { return m_arrayOrdinal; }
  const std::wstring& name() const { return m_name; }
  VolumeState state() const { return m_state; }
  RaidLevel raidLevel() const { return m_raidLevel; }
  std::uint64_t totalSize() const { return m_totalSize; }  ///< Bytes.
  StripSize stripSize() const { return m_stripSize; }
  std::uint32_t numDisks() const { return m_numDisks; }
  std::uint32_t migrProgress() const { return m_migrProgress; }  ///< Percent.
  CachePolicy cachePolicy() const { return m_cachePolicy; }
  bool systemVolume() const { return m_systemVolume; }
  bool migration() const { return m_migration; }
  bool initialized() const { return m_initialized; }
  const Verify& verify() const { return m_verify; }
  const SectorSize& sectorSize() const { return m_sectorSize; }
  const std::wstring& journalingDriveId() const { return m_journalingDriveId; }
  VEX_HANDLE journalingDriveHandle() const { return m_journalingDriveHandle; }
  RwhPolicy rwhPolicy() const { return m_rwhPolicy; }

  void setArrayId(std::wstring id) { m_arrayId = std::move(id); }
  void setJournalingDriveId(std::wstring id) { m_journalingDriveId = std::move(id); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  Volume() = default;

  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  std::wstring m_arrayId;  // filled by the session
  VEX_HANDLE m_arrayHandle = 0;
  std::uint32_t m_arrayOrdinal = 0;
  std::wstring m_name;
  VolumeState m_state = VolumeState::UNKNOWN;
  RaidLevel m_raidLevel = RaidLevel::RAID_UNKNOWN;
  std::uint64_t m_totalSize = 0;
  StripSize m_stripSize = StripSize::SIZE_UNKNOWN;
  std::uint32_t m_numDisks = 0;
  std::uint32_t m_migrProgress = 0;
  CachePolicy m_cachePolicy = CachePolicy::UNKNOWN;
  bool m_systemVolume = false;
  bool m_migration = false;
  bool m_initialized = false;
  Verify m_verify;
  SectorSize m_sectorSize;
  // The write-hole group.
  std::wstring m_journalingDriveId;  // filled by the session
  VEX_HANDLE m_journalingDriveHandle = 0;
  RwhPolicy m_rwhPolicy = RwhPolicy::NONE;
};

/// A forgotten field raises `InitializationException`.
class Volume::Builder : public ModelBuilder<Volume::Builder, Volume, 19> {
 public:
  Builder() : ModelBuilder(Volume()) {}

  Builder& id(std::wstring value) { return set<0>(m_object.m_id, std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<1>(m_object.m_handle, value); }
  Builder& arrayHandle(VEX_HANDLE value) { return set<2>(m_object.m_arrayHandle, value); }
  Builder& arrayOrdinal(std::uint32_t value) { return set<3>(m_object.m_arrayOrdinal, value); }
  Builder& name(std::wstring value) { return set<4>(m_object.m_name, std::move(value)); }
  Builder& state(VolumeState value) { return set<5>(m_object.m_state, value); }
  Builder& raidLevel(RaidLevel value) { return set<6>(m_object.m_raidLevel, value); }
  Builder& totalSize(std::uint64_t value) { return set<7>(m_object.m_totalSize, value); }
  Builder& stripSize(StripSize value) { return set<8>(m_object.m_stripSize, value); }
  Builder& numDisks(std::uint32_t value) { return set<9>(m_object.m_numDisks, value); }
  Builder& migrProgress(std::uint32_t value) { return set<10>(m_object.m_migrProgress, value); }
  Builder& cachePolicy(CachePolicy value) { return set<11>(m_object.m_cachePolicy, value); }
  Builder& systemVolume(bool value) { return set<12>(m_object.m_systemVolume, value); }
  Builder& migration(bool value) { return set<13>(m_object.m_migration, value); }
  Builder& initialized(bool value) { return set<14>(m_object.m_initialized, value); }
  Builder& verify(Verify value) { return set<15>(m_object.m_verify, value); }
  Builder& sectorSize(SectorSize value) { return set<16>(m_object.m_sectorSize, value); }
  Builder& journalingDriveHandle(VEX_HANDLE value) {
    return set<17>(m_object.m_journalingDriveHandle, value);
  }
  Builder& rwhPolicy(RwhPolicy value) { return set<18>(m_object.m_rwhPolicy, value); }

  Volume build() const;
};

#endif
