#include "answers/refusal_kinds.h"

#include "text.h"

namespace host {

namespace {

using Value = RefusalKinds::Value;

}  // namespace

std::optional<RefusalKind> refusalKindOf(const std::wstring& word) {
  for (const RefusalKind kind : {RefusalKind::kRequest, RefusalKind::kAbsent, RefusalKind::kState,
                                 RefusalKind::kUnsupported, RefusalKind::kOffline, RefusalKind::kFailure}) {
    if (word == toText(kind)) return kind;
  }
  return {};
}

/// The first that tells of a pair counts: what an operation says of itself goes ahead of what holds for all.
RefusalKinds::RefusalKinds(const Value& description, const Value& route) {
  add(route, L"refusals");
  add(description, L"refusals");
  add(description, L"statuses");
  if (description.hasKey(L"unknownStatus")) addOne(description.member(L"unknownStatus"));
}

void RefusalKinds::add(const Value& owner, const wchar_t* list) {
  if (!owner.hasKey(list)) return;
  for (const auto element : owner.member(list)) addOne(*element.value);
}

void RefusalKinds::addOne(const Value& refusal) {
  const auto kind = refusalKindOf(refusal.member(L"kind").toString());
  if (!kind) return;
  const std::string errorId = wideToUtf8(refusal.member(L"errorId").toString());
  m_kinds.emplace(std::make_pair(errorId, wideToUtf8(refusal.member(L"words").toString())), *kind);
}

RefusalKind RefusalKinds::of(const std::string& errorId, const std::string& words) const {
  const auto found = m_kinds.find({errorId, words});
  return found == m_kinds.end() ? kindOfErrorId(errorId) : found->second;
}

}  // namespace host
