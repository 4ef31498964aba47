#include "whatif/what_if.h"

#include <stdexcept>

#include "answers/answer.h"

namespace host {

namespace {

constexpr int kNoAnswer = 3;  ///< The program's status for a question that has none; its errors say why.
constexpr std::size_t kMostAnswer = std::size_t{64} << 20;

/// When to ask again: what is asked takes as long at most.
Headers againIn(std::chrono::milliseconds patience) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(patience) + std::chrono::seconds(1);
  return {{"Retry-After", std::to_string(seconds.count())}};
}

}  // namespace

std::string WhatIf::ask(const std::string& question) {
  if (m_program.empty()) throw Refusal(422, "The program that works through what would be is not there");
  const std::unique_lock<std::mutex> one(m_mutex, std::try_to_lock);
  if (!one) throw Refusal(503, "Something else is being worked through", againIn(m_patience));
  ChildOrder order{{m_program}, question, plainEnvironment(), m_patience, kMostAnswer};
  order.environment.emplace_back("LC_ALL=C.UTF-8");
  ChildResult result = m_runner.run(order);
  if (result.end == ChildEnd::kTooLate) {
    throw Refusal(503, "Working it through took too long", againIn(m_patience));
  }
  if (result.end == ChildEnd::kExited && result.status == 0) return std::move(result.output);
  if (result.end == ChildEnd::kExited && result.status == kNoAnswer) {
    throw Refusal(422, "The machine cannot be worked through: " + result.errors);
  }
  throw std::runtime_error("the program that works through what would be has failed");
}

}  // namespace host
