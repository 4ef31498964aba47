#ifndef MIRN_COMMON_RAIDLEVELSUPPORT_H
#define MIRN_COMMON_RAIDLEVELSUPPORT_H

#include <boost/optional.hpp>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "builder.h"
#include "enumerations.h"
#include "field.h"
#include "ServiceObject.h"

/// What one RAID level can do within a `Raid`. Immutable once built, but for the strip sizes by disk count,
/// which the request for the levels fills in.
class RaidLevelSupport {
 public:
  class Builder;

  /// A level that a volume of this level can become.
  struct Migration {
    RaidLevel raidLevel = RaidLevel::RAID_UNKNOWN;
    bool requiresDisk = false;  ///< A further disk is needed.

    template <class Walk>
    static constexpr void fields(Walk& walk) {
      walk(field::word<&Migration::raidLevel>(L"raidLevel", L"What a volume can become."));
      walk(field::flag<&Migration::requiresDisk>(L"requiresDisk", L"Whether that takes a further disk."));
    }
  };

  RaidLevel raidLevel() const { return m_raidLevel; }
  bool supported() const { return m_supported; }
  std::uint32_t minDisks() const { return m_minDisks; }
  std::uint32_t maxDisks() const { return m_maxDisks; }
  const boost::optional<StripSize>& defaultStripSize() const { return m_defaultStripSize; }
  const boost::optional<StripSizeByDisks>& defaultStripSizes() const { return m_defaultStripSizes; }
  const std::vector<Migration>& migrSupport() const { return m_migrSupport; }
  bool evenDiskCount() const { return m_evenDiskCount; }
  bool oddDiskCount() const { return m_oddDiskCount; }
  const std::set<StripSize>& stripSizesSupported() const { return m_stripSizesSupported; }
  bool created() const { return m_created; }

  void setDefaultStripSizes(StripSizeByDisks sizes) { m_defaultStripSizes = std::move(sizes); }

  /// The form that clients see: an object, without `supported`.
  ovra::data_transfer::ServiceObject toServiceObject() const;
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  // Kinds of fields of its own.
  struct StripSizeOrUnknown;
  struct StripSizesByDisks;

  RaidLevelSupport() = default;

  RaidLevel m_raidLevel = RaidLevel::RAID_UNKNOWN;
  bool m_supported = false;
  std::uint32_t m_minDisks = 0;
  std::uint32_t m_maxDisks = 0;
  boost::optional<StripSize> m_defaultStripSize;
  boost::optional<StripSizeByDisks> m_defaultStripSizes;  // filled by the request for the levels
  std::vector<Migration> m_migrSupport;
  bool m_evenDiskCount = false;
  bool m_oddDiskCount = false;
  std::set<StripSize> m_stripSizesSupported;
  bool m_created = false;
};

template <class Walk>
constexpr void RaidLevelSupport::fields(Walk& walk) {
  using namespace field;
  constexpr auto kHasOne = [](const RaidLevelSupport& level) { return !level.m_defaultStripSizes; };
  constexpr auto kHasSeveral = [](const RaidLevelSupport& level) {
    return level.m_defaultStripSizes.has_value();
  };
  walk(word<&RaidLevelSupport::m_raidLevel>(L"raidLevel", L"The level that this is about."));
  walk(deciding<&RaidLevelSupport::m_supported>(L"supported"));
  walk(number<&RaidLevelSupport::m_minDisks>(L"minDisks", L"The fewest disks of a volume."));
  walk(number<&RaidLevelSupport::m_maxDisks>(L"maxDisks", L"The most disks of a volume."));
  walk(of<StripSizeOrUnknown, &RaidLevelSupport::m_defaultStripSize>(
           L"defaultStripSize", L"The strip size of a volume that is made without one.")
           .onlyIf(kHasOne, L"one strip size fits every number of disks"));
  walk(of<StripSizesByDisks, &RaidLevelSupport::m_defaultStripSizes>(L"defaultStripSizes",
                                                                     L"The same, under each number of disks.")
           .onlyIf(kHasSeveral, L"the strip size depends on the number of disks")
           .withoutFlag());
  walk(parts<&RaidLevelSupport::m_migrSupport>(L"migrSupport",
                                               L"The levels that a volume of this one can be changed to."));
  walk(flag<&RaidLevelSupport::m_evenDiskCount>(L"evenDiskCount",
                                                L"Whether a volume may have an even number of disks."));
  walk(flag<&RaidLevelSupport::m_oddDiskCount>(L"oddDiskCount",
                                               L"Whether a volume may have an odd number of disks."));
  walk(words<&RaidLevelSupport::m_stripSizesSupported>(L"stripSizesSupported",
                                                       L"The strip sizes that a volume may have."));
  walk(flag<&RaidLevelSupport::m_created>(L"created", L"Whether there is such a volume."));
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const RaidLevelSupport& one, const RaidLevelSupport& other);
/// The same, but for how far work is.
bool sameStructure(const RaidLevelSupport& one, const RaidLevelSupport& other);

/// A forgotten field is stopped by an assertion. The strip sizes by disk count come later and have no flag.
class RaidLevelSupport::Builder : public ModelBuilder<RaidLevelSupport::Builder, RaidLevelSupport> {
 public:
  Builder() : ModelBuilder(RaidLevelSupport()) {}

  Builder& raidLevel(RaidLevel value) { return set<&RaidLevelSupport::m_raidLevel>(value); }
  Builder& supported(bool value) { return set<&RaidLevelSupport::m_supported>(value); }
  Builder& minDisks(std::uint32_t value) { return set<&RaidLevelSupport::m_minDisks>(value); }
  Builder& maxDisks(std::uint32_t value) { return set<&RaidLevelSupport::m_maxDisks>(value); }
  Builder& defaultStripSize(boost::optional<StripSize> value) {
    return set<&RaidLevelSupport::m_defaultStripSize>(value);
  }
  Builder& migrSupport(std::vector<Migration> value) {
    return set<&RaidLevelSupport::m_migrSupport>(std::move(value));
  }
  Builder& evenDiskCount(bool value) { return set<&RaidLevelSupport::m_evenDiskCount>(value); }
  Builder& oddDiskCount(bool value) { return set<&RaidLevelSupport::m_oddDiskCount>(value); }
  Builder& stripSizesSupported(std::set<StripSize> value) {
    return set<&RaidLevelSupport::m_stripSizesSupported>(std::move(value));
  }
  Builder& created(bool value) { return set<&RaidLevelSupport::m_created>(value); }

  RaidLevelSupport build() const;
};

#endif
