#include "controls/disk_names.h"

#include <algorithm>
#include <exception>

namespace host {

namespace {

constexpr wchar_t kId[] = L"id";
constexpr wchar_t kSerialNumber[] = L"serialNumber";
constexpr int kText = 5;

std::wstring textOf(const DiskNames::Value& object, const wchar_t* key) {
  if (!object.isObject() || !object.hasKey(key)) return {};
  const DiskNames::Value& member = object.member(key);
  return member.which() == kText ? member.toString() : std::wstring();
}

}  // namespace

void DiskNames::remember() try {
  const Value list = m_list();
  if (!list.isArray()) return;
  const std::lock_guard<std::mutex> lock(m_mutex);
  for (const auto element : list) {
    const std::wstring id = textOf(*element.value, kId);
    const std::wstring serialNumber = textOf(*element.value, kSerialNumber);
    if (!id.empty() && !serialNumber.empty()) m_serialNumbers[id] = serialNumber;
  }
} catch (const std::exception&) {
  // The plug-in may be at its beginning or at its end; the control tells more than that.
}

std::wstring DiskNames::serialNumberOf(const std::wstring& id) const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = m_serialNumbers.find(id);
  if (found == m_serialNumbers.end()) return {};
  const auto bearers = std::count_if(m_serialNumbers.begin(), m_serialNumbers.end(),
                                     [&](const auto& entry) { return entry.second == found->second; });
  return bearers == 1 ? found->second : std::wstring();
}

}  // namespace host
