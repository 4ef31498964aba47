#ifndef MIRN_COMMON_RAID_H
#define MIRN_COMMON_RAID_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "builder.h"
#include "field.h"
#include "handle.h"
#include "raid_range.h"
#include "raidlevelsupport.h"
#include "ServiceObject.h"
#include "shared_text.h"

/// What a RAID engine can do. Immutable once built, but for the levels and the range, which the request for
/// them stores in its own copy.
class Raid {
 public:
  class Builder;

  const std::wstring& id() const { return m_id; }
  const SharedText& sharedId() const { return m_id; }
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
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  // A kind of field of its own.
  struct SupportedLevels;

  Raid() = default;

  bool showsLevels() const;

  SharedText m_id;
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

template <class Walk>
constexpr void Raid::fields(Walk& walk) {
  using namespace field;
  constexpr auto kShowsInfo = [](const Raid& raid) { return raid.m_range != RaidRange::kLevel; };
  constexpr wchar_t kOfInfo[] = L"the range asked for is not level";
  constexpr auto kShowsLevels = [](const Raid& raid) { return raid.showsLevels(); };
  walk(text<&Raid::m_id>(L"raidId", L"Names the RAID engine; stays the same across restarts."));
  walk(kept<&Raid::m_handle>(L"handle"));
  walk(number<&Raid::m_maxDisksPerArray>(L"maxDisksPerArray", L"The most disks of an array.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(number<&Raid::m_maxRaidDisksSupported>(L"maxRaidDisksSupported",
                                              L"The most disks in arrays altogether.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(number<&Raid::m_maxVolumesPerArray>(L"maxVolumesPerArray", L"The most volumes of an array.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(number<&Raid::m_maxVolumesPerHba>(L"maxVolumesPerHba", L"The most volumes of a controller.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(flag<&Raid::m_raidEnabled>(L"raidEnabled", L"Whether the engine is on.").onlyIf(kShowsInfo, kOfInfo));
  walk(flag<&Raid::m_globalSpareSupport>(L"globalSpareSupport", L"Whether a spare can serve all arrays.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(flag<&Raid::m_dedicatedSpareSupport>(L"dedicatedSpareSupport",
                                            L"Whether a spare can serve one array alone.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(flag<&Raid::m_createFromExistingSupport>(L"createFromExistingSupport",
                                                L"Whether a volume can be made around a disk with data.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(flag<&Raid::m_emptyArraysSupport>(L"emptyArraysSupport", L"Whether an array can be without volumes.")
           .onlyIf(kShowsInfo, kOfInfo));
  walk(of<SupportedLevels, &Raid::m_levels>(L"raidLevelInfo", L"The RAID levels that it supports.")
           .onlyIf(kShowsLevels, L"the range asked for is not info, and a level is supported")
           .withoutFlag());
  walk(deciding<&Raid::m_range>(L"range").withoutFlag());
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const Raid& one, const Raid& other);
/// The same, but for how far work is.
bool sameStructure(const Raid& one, const Raid& other);

/// A forgotten field is stopped by an assertion.
class Raid::Builder : public ModelBuilder<Raid::Builder, Raid> {
 public:
  Builder() : ModelBuilder(Raid()) {}

  Builder& id(SharedText value) { return set<&Raid::m_id>(std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<&Raid::m_handle>(value); }
  Builder& maxDisksPerArray(std::uint32_t value) { return set<&Raid::m_maxDisksPerArray>(value); }
  Builder& maxRaidDisksSupported(std::uint32_t value) { return set<&Raid::m_maxRaidDisksSupported>(value); }
  Builder& maxVolumesPerArray(std::uint32_t value) { return set<&Raid::m_maxVolumesPerArray>(value); }
  Builder& maxVolumesPerHba(std::uint32_t value) { return set<&Raid::m_maxVolumesPerHba>(value); }
  Builder& raidEnabled(bool value) { return set<&Raid::m_raidEnabled>(value); }
  Builder& globalSpareSupport(bool value) { return set<&Raid::m_globalSpareSupport>(value); }
  Builder& dedicatedSpareSupport(bool value) { return set<&Raid::m_dedicatedSpareSupport>(value); }
  Builder& createFromExistingSupport(bool value) { return set<&Raid::m_createFromExistingSupport>(value); }
  Builder& emptyArraysSupport(bool value) { return set<&Raid::m_emptyArraysSupport>(value); }

  Raid build() const;
};

#endif
