#include "enddevice.h"

#include "published_form.h"
#include "published_keys.h"

using ovra::data_transfer::ServiceObject;

EndDevice EndDevice::Builder::build() const { return builtOrAssert("src\\common\\enddevice", __LINE__); }

namespace {

constexpr wchar_t kWhiteSpace[] = L" \t\n\v\f\r";
constexpr wchar_t kHexPrefix[] = L"0x";

std::wstring trimmed(const std::wstring& text) {
  const auto first = text.find_first_not_of(kWhiteSpace);
  if (first == std::wstring::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

std::wstring prefixed(const std::wstring& text) {
  return text.find(kHexPrefix) == std::wstring::npos ? kHexPrefix + text : text;
}

void publishDisk(PublishedForm& form, const EndDevice::Disk& disk) {
  form.size(keys::kTotalSize, disk.totalSize)
      .part(keys::kSectorSize, PublishedForm()
                                   .size(keys::kLogical, disk.logicalSectorSize)
                                   .size(keys::kPhysical, disk.physicalSectorSize)
                                   .take())
      .size(keys::kFreeSize, disk.freeSize)
      .text(keys::kWriteCachePolicy, toText(disk.writeCachePolicy))
      .flag(keys::kSystemDisk, disk.systemDisk);
  if (disk.x8Disk == X8Disk::X8_A || disk.x8Disk == X8Disk::X8_B)
    form.text(keys::kX8Disk, toText(disk.x8Disk));
}

}  // namespace

EndDevice::Builder& EndDevice::Builder::vendorId(std::wstring value) {
  return set<9>(m_object.m_vendorId, prefixed(trimmed(value)));
}

ServiceObject EndDevice::toServiceObject() const {
  PublishedForm form;
  form.text(keys::kId, m_id)
      .text(keys::kControllerId, m_controllerId)
      .text(keys::kRaidId, m_raidId)
      .part(keys::kArrayId, m_arrayId.empty() ? ServiceObject::null() : ServiceObject(m_arrayId))
      .text(keys::kAddress, m_address)
      .text(keys::kDeviceType, toText(m_deviceType))
      .text(keys::kSerialNumber, m_serialNumber)
      .text(keys::kModel, m_model)
      .text(keys::kFirmware, m_firmware)
      .text(keys::kType, toText(m_disk.type))
      .text(keys::kState, toText(m_disk.state))
      .text(keys::kUsage, toText(m_disk.usage))
      .text(keys::kNegotiatedLinkSpeed, toText(m_negotiatedLinkSpeed))
      .flag(keys::kManagedHotplug, m_managedHotplug);
  if (m_deviceType != DeviceType::NON_DISK_STORAGE) publishDisk(form, m_disk);
  if (m_disk.type == DiskType::Lyx) {
    form.text(keys::kVendorId, m_vendorId)
        .number(keys::kLyxDomain, m_lyxDomain)
        .flag(keys::kIsOrdanNVMe, m_isOrdanNVMe);
  }
  return form.take();
}
