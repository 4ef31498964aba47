#include "host/connections.h"

#include <vector>

#include "host/session.h"

bool Connections::add(const std::shared_ptr<Session>& session) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_stopped || m_sessions.size() >= m_max) return false;
  m_sessions.emplace(session.get(), session);
  return true;
}

void Connections::remove(const Session* session) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_sessions.erase(session);
}

void Connections::stop() {
  std::vector<std::shared_ptr<Session>> alive;  // released after the lock: a session's end takes it again
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_stopped = true;
  for (const auto& [session, weak] : m_sessions) {
    if (auto shared = weak.lock()) alive.push_back(std::move(shared));
  }
  for (const auto& session : alive) session->stop();
}
