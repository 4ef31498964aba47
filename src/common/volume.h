#ifndef MIRN_COMMON_VOLUME_H
#define MIRN_COMMON_VOLUME_H

#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include "builder.h"
#include "enumerations.h"
#include "field.h"
#include "handle.h"
#include "ServiceObject.h"
#include "shared_text.h"

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

    template <class Walk>
    static constexpr void fields(Walk& walk) {
      walk(field::number<&Verify::errors>(L"errors", L"Inconsistencies found.").asProgress());
      walk(field::number<&Verify::badBlocks>(L"badBlocks", L"Unreadable blocks found.").asProgress());
    }
  };

  /// Bytes.
  struct SectorSize {
    std::uint32_t logical = 0;
    std::uint32_t physical = 0;

    template <class Walk>
    static constexpr void fields(Walk& walk) {
      walk(field::size<&SectorSize::logical>(L"logical", L"The sector that commands count in."));
      walk(field::size<&SectorSize::physical>(L"physical", L"The sector that the media are written in."));
    }
  };

  const std::wstring& id() const { return m_id; }
  const SharedText& sharedId() const { return m_id; }
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

  void setArrayId(SharedText id) { m_arrayId = std::move(id); }
  void setJournalingDriveId(SharedText id) { m_journalingDriveId = std::move(id); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  Volume() = default;

  SharedText m_id;
  VEX_HANDLE m_handle = 0;
  SharedText m_arrayId;  // filled by the session
  VEX_HANDLE m_arrayHandle = 0;
  std::uint32_t m_arrayOrdinal = 0;
  SharedText m_name;
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
  SharedText m_journalingDriveId;  // filled by the session
  VEX_HANDLE m_journalingDriveHandle = 0;
  RwhPolicy m_rwhPolicy = RwhPolicy::NONE;
};

template <class Walk>
constexpr void Volume::fields(Walk& walk) {
  using namespace field;
  constexpr auto kHasJournalingDrive = [](const Volume& volume) {
    return volume.m_rwhPolicy == RwhPolicy::RWH_JOURNALING_DRIVE;
  };
  walk(text<&Volume::m_id>(L"id", L"Names the volume; stays the same across restarts."));
  walk(kept<&Volume::m_handle>(L"handle"));
  walk(link<&Volume::m_arrayId>(L"arrayId", L"array", L"The array that the volume lies on."));
  walk(kept<&Volume::m_arrayHandle>(L"arrayHandle"));
  walk(number<&Volume::m_arrayOrdinal>(L"arrayOrdinal", L"Its place among the volumes of the array."));
  walk(text<&Volume::m_name>(L"name", L"The name that its owner gave it."));
  walk(word<&Volume::m_state>(L"state", L"How the volume is, or what is being done to it."));
  walk(word<&Volume::m_raidLevel>(L"raidLevel", L"How the data are spread over the disks."));
  walk(size<&Volume::m_totalSize>(L"totalSize", L"What the volume holds."));
  walk(word<&Volume::m_stripSize>(L"stripSize", L"How much of a stripe lies on one disk; N/A under RAID 1."));
  walk(number<&Volume::m_numDisks>(L"numDisks", L"How many disks it is spread over."));
  walk(number<&Volume::m_migrProgress>(L"migrProgress", L"How far the work under way is.")
           .measuredIn(kPercent)
           .asProgress());
  walk(word<&Volume::m_cachePolicy>(L"cachePolicy", L"How writes pass through the cache."));
  walk(flag<&Volume::m_systemVolume>(L"systemVolume", L"Whether the running system lies on it."));
  walk(flag<&Volume::m_migration>(L"migration", L"Whether its data are being laid out anew."));
  walk(flag<&Volume::m_initialized>(L"initialized", L"Whether its redundancy has been written once."));
  walk(part<&Volume::m_verify>(L"verify", L"What verification has counted."));
  walk(part<&Volume::m_sectorSize>(L"sectorSize", L"The volume's sectors."));
  walk(link<&Volume::m_journalingDriveId>(L"journalingDriveId", L"disk",
                                          L"The disk that holds the write-hole journal; empty when lost.")
           .onlyIf(kHasJournalingDrive, L"rwhPolicy is RWH_JOURNALING_DRIVE"));
  walk(kept<&Volume::m_journalingDriveHandle>(L"journalingDriveHandle"));
  walk(word<&Volume::m_rwhPolicy>(L"rwhPolicy", L"How the volume is kept from the RAID write hole."));
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const Volume& one, const Volume& other);
/// The same, but for how far work is and what verification has counted.
bool sameStructure(const Volume& one, const Volume& other);

/// A forgotten field raises `InitializationException`.
class Volume::Builder : public ModelBuilder<Volume::Builder, Volume> {
 public:
  Builder() : ModelBuilder(Volume()) {}

  Builder& id(SharedText value) { return set<&Volume::m_id>(std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<&Volume::m_handle>(value); }
  Builder& arrayHandle(VEX_HANDLE value) { return set<&Volume::m_arrayHandle>(value); }
  Builder& arrayOrdinal(std::uint32_t value) { return set<&Volume::m_arrayOrdinal>(value); }
  Builder& name(SharedText value) { return set<&Volume::m_name>(std::move(value)); }
  Builder& state(VolumeState value) { return set<&Volume::m_state>(value); }
  Builder& raidLevel(RaidLevel value) { return set<&Volume::m_raidLevel>(value); }
  Builder& totalSize(std::uint64_t value) { return set<&Volume::m_totalSize>(value); }
  Builder& stripSize(StripSize value) { return set<&Volume::m_stripSize>(value); }
  Builder& numDisks(std::uint32_t value) { return set<&Volume::m_numDisks>(value); }
  Builder& migrProgress(std::uint32_t value) { return set<&Volume::m_migrProgress>(value); }
  Builder& cachePolicy(CachePolicy value) { return set<&Volume::m_cachePolicy>(value); }
  Builder& systemVolume(bool value) { return set<&Volume::m_systemVolume>(value); }
  Builder& migration(bool value) { return set<&Volume::m_migration>(value); }
  Builder& initialized(bool value) { return set<&Volume::m_initialized>(value); }
  Builder& verify(Verify value) { return set<&Volume::m_verify>(value); }
  Builder& sectorSize(SectorSize value) { return set<&Volume::m_sectorSize>(value); }
  Builder& journalingDriveHandle(VEX_HANDLE value) { return set<&Volume::m_journalingDriveHandle>(value); }
  Builder& rwhPolicy(RwhPolicy value) { return set<&Volume::m_rwhPolicy>(value); }

  Volume build() const&;
  Volume build() &&;  ///< Hands out the object itself.
};

#endif
