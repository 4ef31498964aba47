#include "answers/answer.h"

#include "answers/problem.h"

namespace host {

Answer jsonAnswer(std::string json) { return {200, "application/json", std::move(json), {}}; }

Answer failureAnswer(const std::exception& failure) {
  const Problem problem = problemOf(failure);
  Answer answer{problem.status, "application/problem+json", problemDocument(problem), {}};
  if (const auto* const refusal = dynamic_cast<const Refusal*>(&failure)) answer.headers = refusal->headers;
  return answer;
}

}  // namespace host
