#include "insight/page.h"

#include <optional>

#include "answers/answer.h"
#include "insight/query_parameters.h"

namespace host {

namespace {

constexpr std::size_t kDefaultLimit = 100;
constexpr std::size_t kMostLimit = 1000;
constexpr wchar_t kCursorMark = L'c';

}  // namespace

std::string Page::next(std::size_t count) const {
  const std::size_t end = begin + limit;
  return end < count ? "c" + std::to_string(end) : std::string();
}

std::size_t limitIn(const std::map<std::wstring, std::wstring>& parameters) {
  const auto limit = parameters.find(L"limit");
  if (limit == parameters.end()) return kDefaultLimit;
  const auto count = static_cast<std::size_t>(wholeNumberOf(limit->second).value_or(0));
  if (count < 1 || count > kMostLimit) throw Refusal(400, "The limit is no number from 1 to 1000");
  return count;
}

Page pageIn(const std::map<std::wstring, std::wstring>& parameters) {
  Page page{0, limitIn(parameters)};
  if (const auto cursor = parameters.find(L"cursor"); cursor != parameters.end()) {
    const std::wstring& text = cursor->second;
    const bool isOurs = !text.empty() && text.front() == kCursorMark;
    const auto begin = isOurs ? wholeNumberOf(text.substr(1)) : std::nullopt;
    if (!begin) throw Refusal(400, "The cursor is none that a page told");
    page.begin = static_cast<std::size_t>(*begin);
  }
  return page;
}

std::vector<DocumentedParameter> pageParameters() {
  return {{"limit", false, "How many at most; 100 without it.",
           R"({"type": "integer", "minimum": 1, "maximum": 1000})"},
          {"cursor", false, "What the page before told as next.", R"({"type": "string"})"}};
}

}  // namespace host
