#include "raidlevelsupport.h"

#include <cstddef>
#include <string>

#include "published_form.h"
#include "published_keys.h"

using ovra::data_transfer::ServiceObject;

RaidLevelSupport RaidLevelSupport::Builder::build() const {
  return builtOrAssert("src\\common\\raidlevelsupport", __LINE__);
}

namespace {

constexpr std::int32_t kNoDiskCount =
    -1;  ///< Its strip size is for no number of disks and is never published.

ServiceObject published(const StripSizeByDisks& sizes) {
  ServiceObject object = ServiceObject::object();
  for (const auto& [disks, size] : sizes) {
    if (disks != kNoDiskCount) object.member(std::to_wstring(disks)) = toText(size);
  }
  return object;
}

ServiceObject published(const std::vector<RaidLevelSupport::Migration>& migrations) {
  ServiceObject list = ServiceObject::array();
  std::size_t next = 0;
  for (const auto& migration : migrations) {
    list.at(next++) = PublishedForm()
                          .text(keys::kRaidLevel, toText(migration.raidLevel))
                          .flag(keys::kRequiresDisk, migration.requiresDisk)
                          .take();
  }
  return list;
}

std::vector<std::wstring> textsOf(const std::set<StripSize>& sizes) {
  std::vector<std::wstring> texts;
  texts.reserve(sizes.size());
  for (const StripSize size : sizes) texts.push_back(toText(size));
  return texts;
}

}  // namespace

ServiceObject RaidLevelSupport::toServiceObject() const {
  PublishedForm form;
  form.text(keys::kRaidLevel, toText(m_raidLevel))
      .number(keys::kMinDisks, m_minDisks)
      .number(keys::kMaxDisks, m_maxDisks)
      .part(keys::kMigrSupport, published(m_migrSupport))
      .flag(keys::kEvenDiskCount, m_evenDiskCount)
      .flag(keys::kOddDiskCount, m_oddDiskCount)
      .flag(keys::kCreated, m_created)
      .texts(keys::kStripSizesSupported, textsOf(m_stripSizesSupported));
  if (m_defaultStripSizes) {
    form.part(keys::kDefaultStripSizes, published(*m_defaultStripSizes));
  } else {
    form.text(keys::kDefaultStripSize, toText(m_defaultStripSize.value_or(StripSize::SIZE_UNKNOWN)));
  }
  return form.take();
}
