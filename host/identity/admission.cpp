#include "identity/admission.h"

#include <chrono>
#include <utility>

#include "identity/base64url.h"
#include "identity/secrets.h"
#include "identity/token.h"
#include "identity/token_table.h"

namespace host {

namespace {

constexpr std::chrono::hours kSessionLife{12};
constexpr std::size_t kSessions = 1000;
constexpr std::chrono::minutes kCodeLife{10};
constexpr std::size_t kCodes = 100;
constexpr std::size_t kCodeBytes = 16;
constexpr std::size_t kLongestCode = 64;

bool claimFirst(const std::string& tokenFile) {
  return TokenTable(tokenFile).claimFirst(sleepFor).has_value();
}

}  // namespace

Admission::Admission(const std::string& tokenFile, Trusted trusted, bool takesParameter,
                     const ReportLine& report, const SteadyClock& clock)
    : m_hasFirst(claimFirst(tokenFile)),
      m_tokens(TokenTable(tokenFile).path(), clock, report),
      m_codes(kCodeLife, kCodes, clock),
      m_sessions(kSessionLife, kSessions, clock),
      m_delay(clock),
      m_clients(m_tokens, m_sessions, m_delay, std::move(trusted), takesParameter) {}

std::string Admission::makeCode(const Identity& identity) {
  std::string code = randomText(kCodeBytes);
  m_codes.add(code, {identity.name, identity.role});
  return code;
}

Admission::Session Admission::signIn(const std::string& code, const Client& client) {
  // No longer text is hashed than may be a code.
  const auto identity = code.size() <= kLongestCode ? m_codes.take(sha256Hex(code)) : std::nullopt;
  if (!identity) throw unknownClient(m_delay.afterWrong(client.address));
  std::string token = makeToken();
  m_sessions.add(token, *identity);
  return {std::move(token), identity->role, m_sessions.life()};
}

bool Admission::signOut(const Identity& identity) {
  return !identity.proof.empty() && m_sessions.take(identity.proof).has_value();
}

}  // namespace host
