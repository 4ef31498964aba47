#include "route_row.h"

#include <array>

namespace {

constexpr std::array<const wchar_t*, 4> kEffects = {L"read", L"harmless", L"changes", L"destroys"};
constexpr std::array<const wchar_t*, 3> kRoles = {L"observe", L"operate", L"administer"};
constexpr std::array<const wchar_t*, 4> kFates = {L"comes", L"changes", L"goes", L"overwritten"};
constexpr std::array<const wchar_t*, 4> kWorks = {L"rebuild", L"initialize", L"verify", L"migrate"};

template <class Words, class Value>
const wchar_t* wordOf(const Words& words, Value value) {
  return words[static_cast<std::size_t>(value)];
}

}  // namespace

const wchar_t* toText(Effect effect) { return wordOf(kEffects, effect); }
const wchar_t* toText(Role role) { return wordOf(kRoles, role); }
const wchar_t* toText(Fate fate) { return wordOf(kFates, fate); }
const wchar_t* toText(WorkKind work) { return wordOf(kWorks, work); }
