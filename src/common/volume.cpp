#include "volume.h"

#include "published_form.h"
#include "published_keys.h"

using ovra::data_transfer::ServiceObject;

Volume Volume::Builder::build() const { return builtOrThrow<InitializationException>(); }

namespace {

ServiceObject published(const Volume::Verify& verify) {
  return PublishedForm()
      .number(keys::kErrors, verify.errors)
      .number(keys::kBadBlocks, verify.badBlocks)
      .take();
}

ServiceObject published(const Volume::SectorSize& size) {
  return PublishedForm().size(keys::kLogical, size.logical).size(keys::kPhysical, size.physical).take();
}

}  // namespace

ServiceObject Volume::toServiceObject() const {
  PublishedForm form;
  form.text(keys::kId, m_id)
      .text(keys::kArrayId, m_arrayId)
      .number(keys::kArrayOrdinal, m_arrayOrdinal)
      .text(keys::kName, m_name)
      .text(keys::kState, toText(m_state))
      .text(keys::kRaidLevel, toText(m_raidLevel))
      .size(keys::kTotalSize, m_totalSize)
      .text(keys::kStripSize, toText(m_stripSize))
      .number(keys::kNumDisks, m_numDisks)
      .number(keys::kMigrProgress, m_migrProgress)
      .text(keys::kCachePolicy, toText(m_cachePolicy))
      .flag(keys::kSystemVolume, m_systemVolume)
      .flag(keys::kMigration, m_migration)
      .flag(keys::kInitialized, m_initialized)
      .part(keys::kVerify, published(m_verify))
      .part(keys::kSectorSize, published(m_sectorSize))
      .text(keys::kRwhPolicy, toText(m_rwhPolicy));
  if (m_rwhPolicy == RwhPolicy::RWH_JOURNALING_DRIVE)
    form.text(keys::kJournalingDriveId, m_journalingDriveId);
  return form.take();
}
