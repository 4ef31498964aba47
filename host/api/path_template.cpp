#include "api/path_template.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <cstddef>
#include <tuple>

namespace host {

namespace {

constexpr wchar_t kRest[] = L"{*}";

}  // namespace

/// The names of two arguments in one place do not make two places.
bool PathTemplate::Part::operator==(const Part& other) const {
  return kind == other.kind && (kind != Kind::kText || text == other.text);
}

bool PathTemplate::Part::operator<(const Part& other) const {
  if (kind != other.kind) return kind < other.kind;
  return kind == Kind::kText && text < other.text;
}

PathTemplate::Part PathTemplate::partOf(const std::wstring& segment) {
  if (segment == kRest) return {Kind::kRest, {}};
  if (!segment.empty() && segment.front() == L'{')
    return {Kind::kName, segment.substr(1, segment.size() - 2)};
  return {Kind::kText, segment};
}

PathTemplate::PathTemplate(std::wstring_view text) {
  if (text.empty()) return;
  Segments segments;
  boost::algorithm::split(segments, text, boost::algorithm::is_any_of(L"/"));
  std::transform(segments.begin(), segments.end(), std::back_inserter(m_parts), partOf);
}

bool PathTemplate::matches(const Segments& segments) const {
  const std::size_t count = hasRest() ? m_parts.size() - 1 : m_parts.size();
  if (hasRest() ? segments.size() < count : segments.size() != count) return false;
  for (std::size_t i = count; i-- > 0;) {  // paths differ at their ends
    const Part& part = m_parts[i];
    if (part.kind != Kind::kText) continue;
    if (part.text.size() != segments[i].size() || part.text != segments[i]) return false;
  }
  return true;
}

std::map<std::wstring, std::wstring> PathTemplate::argumentsIn(const Segments& segments) const {
  std::map<std::wstring, std::wstring> arguments;
  for (std::size_t i = 0; i < std::min(m_parts.size(), segments.size()); ++i) {
    if (m_parts[i].kind == Kind::kName) arguments[m_parts[i].text] = segments[i];
  }
  return arguments;
}

}  // namespace host
