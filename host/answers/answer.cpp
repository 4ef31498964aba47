#include "answers/answer.h"

#include <algorithm>
#include <string_view>

#include "answers/json_writer.h"
#include "answers/problem.h"

namespace host {

namespace {

constexpr unsigned kUnavailable = 503;
constexpr std::string_view kRetryAfter = "Retry-After";
constexpr char kRetrySeconds[] = "2";

}  // namespace

Answer jsonAnswer(std::string json) { return {200, "application/json", std::move(json), {}}; }

Answer valueAnswer(const ovra::data_transfer::ServiceObject& value) {
  if (value.isNull()) return {204, {}, {}, {}};
  return jsonAnswer(writeJson(value));
}

Answer failureAnswer(const std::exception& failure, const RefusalKinds& kinds) {
  const Problem problem = problemOf(failure, kinds);
  Answer answer{problem.status, "application/problem+json", problemDocument(problem), {}};
  if (const auto* const refusal = dynamic_cast<const Refusal*>(&failure)) answer.headers = refusal->headers;
  const bool saysWhen = std::any_of(answer.headers.begin(), answer.headers.end(),
                                    [](const auto& field) { return field.first == kRetryAfter; });
  if (answer.status == kUnavailable && !saysWhen) answer.headers.emplace_back(kRetryAfter, kRetrySeconds);
  return answer;
}

}  // namespace host
