#include "controller.h"

#include <ios>
#include <locale>
#include <sstream>

#include "published_form.h"
#include "published_keys.h"

using ovra::data_transfer::ServiceObject;

namespace {

constexpr wchar_t kHexPrefix[] = L"0x";

/// Lower-case hexadecimal without padding. A stream shows the base of every number but 0.
std::wstring hexText(std::uint32_t number) {
  std::wostringstream stream;
  stream.imbue(std::locale::classic());
  stream << std::hex << std::showbase << number;
  const std::wstring text = stream.str();
  return text.find(kHexPrefix) == std::wstring::npos ? kHexPrefix + text : text;
}

ServiceObject published(const Controller::Preboot& preboot) {
  return PublishedForm()
      .text(keys::kManagerVersion, preboot.managerVersion)
      .flag(keys::kLoaded, preboot.loaded)
      .flag(keys::kTwoTbVolumeSupport, preboot.twoTbVolumeSupport)
      .flag(keys::kTwoTbDiskSupport, preboot.twoTbDiskSupport)
      .take();
}

ServiceObject published(const Controller::Switch& feature) {
  return PublishedForm()
      .flag(keys::kSupported, feature.supported)
      .flag(keys::kEnabled, feature.enabled)
      .take();
}

}  // namespace

ServiceObject Controller::Functions::toServiceObject() const {
  return PublishedForm()
      .flag(keys::kPortLocate, m_portLocate)
      .flag(keys::kMarkAsNormal, m_markAsNormal)
      .flag(keys::kVolumeDelete, m_volumeDelete)
      .flag(keys::kArrayCreate, m_arrayCreate)
      .flag(keys::kVolumeModify, m_volumeModify)
      .flag(keys::kVolumeRename, m_volumeRename)
      .flag(keys::kAddDisksToArray, m_addDisksToArray)
      .flag(keys::kVolumeSetCachePolicy, m_volumeSetCachePolicy)
      .flag(keys::kVolumeCancelVerify, m_volumeCancelVerify)
      .flag(keys::kMarkAsSpare, m_markAsSpare)
      .take();
}

ServiceObject Controller::toServiceObject() const {
  return PublishedForm()
      .text(keys::kId, m_id)
      .text(keys::kRaidId, m_raidId)
      .text(keys::kName, m_name)
      .text(keys::kType, toText(m_type))
      .text(keys::kMode, toText(m_mode))
      .text(keys::kVersion, m_version)
      .text(keys::kVendorId, hexText(m_pciIds.vendorId))
      .text(keys::kDeviceId, hexText(m_pciIds.deviceId))
      .text(keys::kSubSystemId, hexText(m_pciIds.subSystemId))
      .number(keys::kHardwareRevisionId, m_pciIds.hardwareRevisionId)
      .number(keys::kSubClassCode, m_pciIds.subClassCode)
      .text(keys::kSubVendorId, hexText(m_pciIds.subVendorId))
      .number(keys::kAvailableDisks, m_availableDisks)
      .number(keys::kAvailableDevices, m_availableDevices)
      .flag(keys::kDisableESataSpanning, m_disableESataSpanning)
      .part(keys::kPreboot, published(m_preboot))
      .part(keys::kXor, published(m_xor))
      .flag(keys::kNvsramSupported, m_nvsramSupported)
      .part(keys::kSupportedFunctions, m_supportedFunctions.toServiceObject())
      .part(keys::kReadPatrol, published(m_readPatrol))
      .part(keys::kRohi, published(m_rohi))
      .take();
}
