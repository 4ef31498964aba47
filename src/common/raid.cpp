#include "raid.h"

#include <cstddef>

#include "published_form.h"
#include "published_keys.h"

using ovra::data_transfer::ServiceObject;

Raid Raid::Builder::build() const { return builtOrAssert("src\\common\\raid", __LINE__); }

namespace {

void publishInfo(PublishedForm& form, const Raid& raid) {
  form.text(keys::kRaidId, raid.id())
      .number(keys::kMaxDisksPerArray, raid.maxDisksPerArray())
      .number(keys::kMaxRaidDisksSupported, raid.maxRaidDisksSupported())
      .number(keys::kMaxVolumesPerArray, raid.maxVolumesPerArray())
      .number(keys::kMaxVolumesPerHba, raid.maxVolumesPerHba())
      .flag(keys::kRaidEnabled, raid.raidEnabled())
      .flag(keys::kGlobalSpareSupport, raid.globalSpareSupport())
      .flag(keys::kDedicatedSpareSupport, raid.dedicatedSpareSupport())
      .flag(keys::kCreateFromExistingSupport, raid.createFromExistingSupport())
      .flag(keys::kEmptyArraysSupport, raid.emptyArraysSupport());
}

/// The supported levels, without gaps.
ServiceObject supportedLevels(const std::vector<RaidLevelSupport>& levels) {
  ServiceObject list = ServiceObject::array();
  std::size_t next = 0;
  for (const RaidLevelSupport& level : levels) {
    if (level.supported()) list.at(next++) = level.toServiceObject();
  }
  return list;
}

void publishLevels(PublishedForm& form, const Raid& raid) {
  form.text(keys::kRaidId, raid.id());
  ServiceObject levels = supportedLevels(raid.levels());
  if (levels.begin() != levels.end()) form.part(keys::kRaidLevelInfo, std::move(levels));
}

}  // namespace

ServiceObject Raid::toServiceObject() const {
  PublishedForm form;
  if (m_range != RaidRange::kLevel) publishInfo(form, *this);
  if (m_range != RaidRange::kInfo && !m_levels.empty()) publishLevels(form, *this);
  return form.take();
}
