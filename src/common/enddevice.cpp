#include "enddevice.h"

#include "field_comparison.h"
#include "published_fields.h"

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

}  // namespace

EndDevice::Builder& EndDevice::Builder::vendorId(std::wstring value) {
  return set<&EndDevice::m_vendorId>(prefixed(trimmed(value)));
}

void EndDevice::shareTextsWith(const EndDevice& other) {
  m_vendorId.shareIfEqual(other.m_vendorId);
  m_model.shareIfEqual(other.m_model);
  m_firmware.shareIfEqual(other.m_firmware);
}

ServiceObject EndDevice::toServiceObject() const { return field::formOf<EndDevice>(*this); }

ServiceObject EndDevice::schema() { return field::schemaOf<EndDevice>(); }

bool sameForm(const EndDevice& one, const EndDevice& other) {
  return field::sameFields<EndDevice>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const EndDevice& one, const EndDevice& other) {
  return field::sameFields<EndDevice>(one, other, field::Progress::IGNORED);
}
