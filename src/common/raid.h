#ifndef MIRN_COMMON_RAID_H
#define MIRN_COMMON_RAID_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "builder.h"
#include "handle.h"
#include "raid_range.h"
#include "raidlevelsupport.h"
#include "ServiceObject.h"

/// What a RAID engine can do. Immutable once built, but for the levels and the range, which the request for
/// them stores in its own copy.
class Raid {
 public:
  class Builder;

  const std::wstring& id() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  std::uint32_t maxDisksPerArray() const { return m_maxDisksPerArray; }
  std::uint32_t maxRaidDisksSupported() const { return m_maxRaidDisksSupported; }
  std::uint32_t maxVolumesPerArray() const { return m_maxVolumesPerArray; }
  std::uint32_t maxVolumesPerHba() const { return m_maxVolumesPerHba; }
  bool raidEnabled() const { return m_raidEnabled; }
  bool globalSpareSupport() const { return m_globalSpareSupport; }
  bool dedicatedSpareSupport() const { return m_dedicatedSpareSupport; }
  bool createFromExistingSupport() const { return m_createFromExistingSupport; }
  bool emptyArraysSupport() const { return m_emptyArraysSupport; }
  const std::vector<RaidLevelSupport>& levels() const { return m_levels; }
  RaidRange range() const { return m_range; }

  void setLevels(std::vector<RaidLevelSupport> levels) { m_levels = std::move(levels); }
  void setRange(RaidRange range) { m_range = range; }

  /// The form that clients see: an object, or the null value for a range of levels alone without a level.
  /// Levels that are not supported are left out.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  Raid() = default;

  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  std::uint32_t m_maxDisksPerArray = 0;
  std::uint32_t m_maxRaidDisksSupported = 0;
  std::uint32_t m_maxVolumesPerArray = 0;
  std::uint32_t m_maxVolumesPerHba = 0;
  bool m_raidEnabled = false;
  bool m_globalSpareSupport = false;
  bool m_dedicatedSpareSupport = false;
  bool m_createFromExistingSupport = false;
  bool m_emptyArraysSupport = false;
  std::vector<RaidLevelSupport> m_levels;  // stored by the request for the levels
  RaidRange m_range = RaidRange::kAll;     // likewise
};

/// A forgotten field is stopped by an assertion.
class Raid::Builder : public ModelBuilder<Raid::Builder, Raid, 11> {
 public:
  Builder() : ModelBuilder(Raid()) {}

  Builder& id(std::wstring value) { return set<0>(m_object.m_id, std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<1>(m_object.m_handle, value); }
  Builder& maxDisksPerArray(std::uint32_t value) { return set<2>(m_object.m_maxDisksPerArray, value); }
  Builder& maxRaidDisksSupported(std::uint32_t value) {
    return set<3>(m_object.m_maxRaidDisksSupported, value);
  }
  Builder& maxVolumesPerArray(std::uint32_t value) { return set<4>(m_object.m_maxVolumesPerArray, value); }
  Builder& maxVolumesPerHba(std::uint32_t value) { return set<5>(m_object.m_maxVolumesPerHba, value); }
  Builder& raidEnabled(bool value) { return set<6>(m_object.m_raidEnabled, value); }
  Builder& globalSpareSupport(bool value) { return set<7>(m_object.m_globalSpareSupport, value); }
  Builder& dedicatedSpareSupport(bool value) { return set<8>(m_object.m_dedicatedSpareSupport, value); }
  Builder& createFromExistingSupport(bool value) {
    return set<9>(m_object.m_createFromExistingSupport, value);
  }
  Builder& emptyArraysSupport(bool value) { return set<10>(m_object.m_emptyArraysSupport, value); }

  Raid build() const;
};

#endif
