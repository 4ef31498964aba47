#include "identity/admission.h"

#include <chrono>
#include <utility>

#include "identity/token_table.h"

namespace host {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::hours kSessionLife{12};
constexpr std::size_t kSessions = 1000;

bool claimFirst(const std::string& tokenFile) {
  return TokenTable(tokenFile).claimFirst(sleepFor).has_value();
}

}  // namespace

Admission::Admission(const std::string& tokenFile, Trusted trusted, bool takesParameter,
                     const ReportLine& report)
    : m_hasFirst(claimFirst(tokenFile)),
      m_tokens(TokenTable(tokenFile).path(), steady_clock::now, report),
      m_sessions(kSessionLife, kSessions, steady_clock::now),
      m_delay(steady_clock::now),
      m_clients(m_tokens, m_sessions, m_delay, std::move(trusted), takesParameter) {}

}  // namespace host
