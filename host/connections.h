#ifndef MIRN_HOST_CONNECTIONS_H
#define MIRN_HOST_CONNECTIONS_H

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>

class Session;

/// The sessions that are alive, up to a maximum. Owns none of them. Safe from any thread.
class Connections {
 public:
  explicit Connections(std::size_t max) : m_max(max) {}

  /// False when there are too many, or when they have been stopped.
  bool add(const std::shared_ptr<Session>& session);
  void remove(const Session* session);

  /// Lets every session end as soon as it has nothing under way, and no further one begin.
  void stop();

 private:
  const std::size_t m_max;
  std::mutex m_mutex;
  std::map<const Session*, std::weak_ptr<Session>> m_sessions;
  bool m_stopped = false;
};

#endif
