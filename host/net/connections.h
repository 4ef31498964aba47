#ifndef MIRN_HOST_NET_CONNECTIONS_H
#define MIRN_HOST_NET_CONNECTIONS_H

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>

namespace host {

class Connection;

/// The connections that are alive, up to a maximum. Owns none of them. Safe from any thread.
class Connections {
 public:
  explicit Connections(std::size_t max) : m_max(max) {}

  /// False when there are too many, or when they have been stopped.
  bool add(const std::shared_ptr<Connection>& connection);
  void remove(const Connection* connection);

  /// Lets every connection end as soon as it has nothing under way, and no further one begin.
  void stop();

 private:
  const std::size_t m_max;
  std::mutex m_mutex;
  std::map<const Connection*, std::weak_ptr<Connection>> m_connections;
  bool m_stopped = false;
};

}  // namespace host

#endif
