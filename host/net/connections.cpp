#include "net/connections.h"

#include <vector>

#include "net/connection.h"

namespace host {

bool Connections::add(const std::shared_ptr<Connection>& connection) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_stopped || m_connections.size() >= m_max) return false;
  m_connections.emplace(connection.get(), connection);
  return true;
}

void Connections::remove(const Connection* connection) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_connections.erase(connection);
}

void Connections::stop() {
  std::vector<std::shared_ptr<Connection>>
      alive;  // released after the lock: a connection's end takes it again
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_stopped = true;
  for (const auto& [connection, weak] : m_connections) {
    if (auto shared = weak.lock()) alive.push_back(std::move(shared));
  }
  for (const auto& connection : alive) connection->stop();
}

}  // namespace host
