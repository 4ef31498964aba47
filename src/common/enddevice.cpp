#include "enddevice.h"

#include <string_view>

#include "field_comparison.h"
#include "published_fields.h"

using ovra::data_transfer::ServiceObject;

EndDevice EndDevice::Builder::build() const& { return builtOrAssert("src\\common\\enddevice", __LINE__); }

EndDevice EndDevice::Builder::build() && { return movedOrAssert("src\\common\\enddevice", __LINE__); }

namespace {

constexpr wchar_t kWhiteSpace[] = L" \t\n\v\f\r";
constexpr wchar_t kHexPrefix[] = L"0x";

std::wstring trimmed(const std::wstring& text) {
  const auto first = text.find_first_not_of(kWhiteSpace);
  if (first == std::wstring::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhiteSpace) - first + 1);
}

bool isPrefixed(const std::wstring& text) { return text.find(kHexPrefix) != std::wstring::npos; }

std::wstring prefixed(const std::wstring& text) { return isPrefixed(text) ? text : kHexPrefix + text; }

bool isWhiteSpace(wchar_t character) {
  return std::wstring_view(kWhiteSpace).find(character) != std::wstring_view::npos;
}

bool isVendorId(const std::wstring& text) {
  return isPrefixed(text) && !isWhiteSpace(text.front()) && !isWhiteSpace(text.back());
}

}  // namespace

std::wstring EndDevice::vendorIdOf(const std::wstring& text) { return prefixed(trimmed(text)); }

/// What has that form already stays the shared text that it is.
EndDevice::Builder& EndDevice::Builder::vendorId(const SharedText& value) {
  return set<&EndDevice::m_vendorId>(isVendorId(value) ? value : SharedText(vendorIdOf(value)));
}

ServiceObject EndDevice::toServiceObject() const { return field::formOf<EndDevice>(*this); }

ServiceObject EndDevice::schema() { return field::schemaOf<EndDevice>(); }

bool sameForm(const EndDevice& one, const EndDevice& other) {
  return field::sameFields<EndDevice>(one, other, field::Progress::COUNTS);
}

bool sameStructure(const EndDevice& one, const EndDevice& other) {
  return field::sameFields<EndDevice>(one, other, field::Progress::IGNORED);
}
