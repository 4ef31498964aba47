#include "answers/entity_tag.h"

#include <algorithm>

#include "answers/field_list.h"

namespace host {

namespace {

constexpr std::string_view kWeakMark = "W/";

bool isSame(std::string_view named, std::string_view tag, TagComparison comparison) {
  const bool isWeak = named.substr(0, kWeakMark.size()) == kWeakMark;
  if (isWeak) named.remove_prefix(kWeakMark.size());
  return named == tag && (!isWeak || comparison == TagComparison::kWeak);
}

}  // namespace

bool namesAnyTag(std::string_view list) { return trimmed(list) == "*"; }

bool namesTag(std::string_view list, std::string_view tag, TagComparison comparison) {
  if (namesAnyTag(list)) return true;
  const auto tags = partsOf(list, ',');
  return std::any_of(tags.begin(), tags.end(),
                     [&](std::string_view named) { return isSame(named, tag, comparison); });
}

}  // namespace host
