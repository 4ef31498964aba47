#include "insight/query_parameters.h"

#include <algorithm>

#include "answers/answer.h"
#include "history/moment.h"
#include "text.h"

namespace host {

namespace {

constexpr std::size_t kMostDigits = 9;

[[noreturn]] void refuse(const std::string& name, const std::string& reason) {
  throw Refusal(400, "The parameter \"" + name + "\" " + reason);
}

}  // namespace

std::optional<std::int64_t> wholeNumberOf(const std::wstring& text) {
  const auto isDigit = [](wchar_t each) { return each >= L'0' && each <= L'9'; };
  const bool isNumber = !text.empty() && text.size() <= kMostDigits;
  if (!isNumber || !std::all_of(text.begin(), text.end(), isDigit)) return {};
  return std::stoll(text);
}

void requireKnown(const Parameters& parameters, const std::vector<DocumentedParameter>& known) {
  for (const auto& [wideName, value] : parameters) {
    const std::string name = wideToUtf8(wideName);
    const bool isKnown = std::any_of(known.begin(), known.end(), [&](const DocumentedParameter& each) {
      return !each.isInPath && each.name == name;
    });
    if (!isKnown) refuse(name, "is none of this path");
  }
}

std::string textIn(const Parameters& parameters, const std::string& name) {
  const auto found = parameters.find(utf8ToWide(name));
  if (found == parameters.end()) return {};
  if (found->second.empty()) refuse(name, "is empty");
  return wideToUtf8(found->second);
}

std::string wordIn(const Parameters& parameters, const std::string& name,
                   const std::vector<std::string>& words) {
  std::string text = textIn(parameters, name);
  if (text.empty() || std::find(words.begin(), words.end(), text) != words.end()) return text;
  std::string list;
  for (const std::string& word : words) list += (list.empty() ? "" : ", ") + word;
  refuse(name, "is none of " + list);
}

std::optional<std::int64_t> numberIn(const Parameters& parameters, const std::string& name,
                                     std::int64_t least, std::int64_t most) {
  const auto found = parameters.find(utf8ToWide(name));
  if (found == parameters.end()) return {};
  const auto number = wholeNumberOf(found->second);
  if (!number || *number < least || *number > most) {
    refuse(name, "is no number from " + std::to_string(least) + " to " + std::to_string(most));
  }
  return number;
}

std::optional<std::int64_t> momentIn(const Parameters& parameters, const std::string& name) {
  const std::string text = textIn(parameters, name);
  if (text.empty()) return {};
  const auto moment = insight::momentOf(text);
  if (!moment) refuse(name, "is no moment such as 2026-11-22T01:05:00Z");
  return moment;
}

}  // namespace host
