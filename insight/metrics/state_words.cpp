#include "metrics/state_words.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "text.h"

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr char kUnknown[] = "unknown";
constexpr wchar_t kUnknownInForms[] = L"UNKNOWN";

/// Null where there is none.
const ServiceObject* memberAt(const ServiceObject& object, std::initializer_list<const wchar_t*> path) {
  const ServiceObject* found = &object;
  for (const wchar_t* const key : path) {
    if (!found->isObject() || !found->hasKey(key)) return nullptr;
    found = &std::as_const(*found).member(key);
  }
  return found;
}

/// Of a member of an object of the schema.
StateWords wordsOf(const ServiceObject& description, const wchar_t* schema, const wchar_t* member) {
  std::vector<std::string> words;
  const ServiceObject* const told =
      memberAt(description, {L"schemas", schema, L"properties", member, L"enum"});
  if (told == nullptr) return {};
  for (const auto each : *told) {
    const std::wstring word = each.value->toString();
    if (word != kUnknownInForms) words.push_back(wideToUtf8(word));
  }
  return StateWords(std::move(words));
}

}  // namespace

StateWords::StateWords(std::vector<std::string> known) : m_all(std::move(known)) {
  m_all.emplace_back(kUnknown);
}

std::size_t StateWords::placeOf(const std::wstring& word) const {
  const auto isMeant = [&](const std::string& each) {
    return std::equal(each.begin(), each.end(), word.begin(), word.end(),
                      [](unsigned char one, wchar_t other) { return static_cast<wchar_t>(one) == other; });
  };
  const auto last = m_all.end() - 1;
  return static_cast<std::size_t>(std::find_if(m_all.begin(), last, isMeant) - m_all.begin());
}

MachineWords machineWordsOf(const ServiceObject& description) {
  return {wordsOf(description, L"State", L"state"), wordsOf(description, L"Array", L"state"),
          wordsOf(description, L"Volume", L"state"), wordsOf(description, L"EndDevice", L"state"),
          wordsOf(description, L"EndDevice", L"usage")};
}

}  // namespace insight
