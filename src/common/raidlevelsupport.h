#ifndef MIRN_COMMON_RAIDLEVELSUPPORT_H
#define MIRN_COMMON_RAIDLEVELSUPPORT_H

#include <boost/optional.hpp>
#include <cstdint>
#include <set>
#include <utility>
#include <vector>

#include "builder.h"
#include "enumerations.h"
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

 private:
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

/// A forgotten field is stopped by an assertion. The strip sizes by disk count come later and have no flag.
class RaidLevelSupport::Builder : public ModelBuilder<RaidLevelSupport::Builder, RaidLevelSupport, 10> {
 public:
  Builder() : ModelBuilder(RaidLevelSupport()) {}

  Builder& raidLevel(RaidLevel value) { return set<0>(m_object.m_raidLevel, value); }
  Builder& supported(bool value) { return set<1>(m_object.m_supported, value); }
  Builder& minDisks(std::uint32_t value) { return set<2>(m_object.m_minDisks, value); }
  Builder& maxDisks(std::uint32_t value) { return set<3>(m_object.m_maxDisks, value); }
  Builder& defaultStripSize(boost::optional<StripSize> value) {
    return set<4>(m_object.m_defaultStripSize, value);
  }
  Builder& migrSupport(std::vector<Migration> value) {
    return set<5>(m_object.m_migrSupport, std::move(value));
  }
  Builder& evenDiskCount(bool value) { return set<6>(m_object.m_evenDiskCount, value); }
  Builder& oddDiskCount(bool value) { return set<7>(m_object.m_oddDiskCount, value); }
  Builder& stripSizesSupported(std::set<StripSize> value) {
    return set<8>(m_object.m_stripSizesSupported, std::move(value));
  }
  Builder& created(bool value) { return set<9>(m_object.m_created, value); }

  RaidLevelSupport build() const;
};

#endif
