#include "wire/client.h"

#include <utility>

#include "exit_status.h"
#include "wire/connection.h"

namespace mirnctl {

Client::Client(Destination destination, std::chrono::seconds patience)
    : m_destination(std::move(destination)), m_patience(patience) {}

Client::~Client() = default;

std::unique_ptr<Connection> Client::connect() const {
  if (m_destination.isSecure) return secureConnection(m_destination, m_patience);
  return plainConnection(m_destination, m_patience);
}

Connection& Client::connection() {
  if (!m_connection || !m_connection->isOpen()) m_connection = connect();
  return *m_connection;
}

/// A connection that is there may have been ended by the service meanwhile: what may be asked twice is
/// asked again over a new one, and a change is never sent over an old one.
Reply Client::ask(const Request& request) {
  const bool isRead = request.method == "GET";
  if (!isRead) m_connection.reset();
  const bool isReused = m_connection && m_connection->isOpen();
  try {
    return connection().ask(request);
  } catch (const Failure&) {
    if (!isReused) throw;
  }
  m_connection.reset();
  return connection().ask(request);
}

Reply Client::follow(const Request& request, const std::function<bool(std::string_view)>& take) {
  return connection().follow(request, take);
}

}  // namespace mirnctl
