#include "identity/passing_secrets.h"

#include "identity/secrets.h"

namespace host {

void PassingSecrets::add(std::string_view secret, const Identity& identity) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_secrets.push_back({sha256Hex(secret), identity, m_clock() + m_life});
  if (m_secrets.size() > m_max) m_secrets.pop_front();
}

std::optional<Identity> PassingSecrets::find(std::string_view hash) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = search(hash);
  if (found == m_secrets.end()) return {};
  return found->identity;
}

std::optional<Identity> PassingSecrets::take(std::string_view hash) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = search(hash);
  if (found == m_secrets.end()) return {};
  Identity identity = found->identity;
  m_secrets.erase(found);
  return identity;
}

std::list<PassingSecrets::Secret>::iterator PassingSecrets::search(std::string_view hash) {
  const auto now = m_clock();
  while (!m_secrets.empty() && m_secrets.front().end <= now) m_secrets.pop_front();
  auto found = m_secrets.end();
  for (auto secret = m_secrets.begin(); secret != m_secrets.end(); ++secret) {
    if (sameHash(secret->hash, hash)) found = secret;
  }
  return found;
}

}  // namespace host
