#include "identity/token_store.h"

#include <stdexcept>
#include <utility>

#include "identity/private_text.h"
#include "identity/secrets.h"

namespace host {

TokenStore::TokenStore(std::filesystem::path path, SteadyClock clock, ReportLine report)
    : m_path(std::move(path)), m_clock(std::move(clock)), m_report(std::move(report)), m_looked(m_clock()) {
  take(readPrivateText(m_path).value_or(""));
}

std::optional<TokenEntry> TokenStore::find(std::string_view hash) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_clock() - m_looked >= kRenewal) renew();
  std::optional<TokenEntry> found;
  for (const TokenEntry& entry : m_entries) {
    if (sameHash(entry.hash, hash)) found = entry;
  }
  return found;
}

void TokenStore::reload() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  renew();
}

void TokenStore::renew() {
  m_looked = m_clock();
  try {
    const std::string text = readPrivateText(m_path).value_or("");
    if (text != m_text) take(text);
    m_failure.clear();
  } catch (const std::exception& failure) {
    tell(failure.what());
  }
}

void TokenStore::take(const std::string& text) {
  const TokenLines lines(text);
  for (const TokenFault& fault : lines.faults()) {
    m_report("token table \"" + m_path.u8string() + "\", line " + std::to_string(fault.line) +
             " lets nobody in: " + fault.reason);
  }
  m_entries = lines.entries();
  m_text = text;
}

/// Once for each failure: it is met again each second.
void TokenStore::tell(const std::string& failure) {
  if (failure == m_failure) return;
  m_failure = failure;
  m_report("token table \"" + m_path.u8string() + "\" is left as it was read before: it " + failure);
}

}  // namespace host
