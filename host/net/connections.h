#ifndef MIRN_HOST_NET_CONNECTIONS_H
#define MIRN_HOST_NET_CONNECTIONS_H

#include <atomic>
#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "identity/client.h"
#include "service_limits.h"

namespace host {

/// What takes up the place of a connection. Both calls are safe from any thread, and come back at once.
class Occupant {
 public:
  virtual ~Occupant() = default;

  /// The place is another's now: ends at once when it rests, otherwise after what is under way.
  virtual void giveUp() = 0;

  /// Ends after what is under way.
  virtual void stop() = 0;
};

/// The connections that are alive, up to a maximum of all and one of each address; neither the loopback nor a
/// Unix socket has the latter. Where there is no place, the one that has rested for longest gives up its own.
/// Owns none of them. Safe from any thread.
class Connections {
 public:
  explicit Connections(const Limits& limits);

  /// The connection rests. False when there are too many that do not, or when they have been stopped.
  bool add(const std::shared_ptr<Occupant>& occupant, const Client& client);
  void remove(const Occupant* occupant);

  /// From now on its place may be taken, or no longer. One that rests already rests for as long as it has.
  void rest(const Occupant* occupant);
  void wake(const Occupant* occupant);

  /// Takes the place of the one that has rested for longest, if there is one.
  void closeLongestResting();

  /// Lets every connection end as soon as it has nothing under way, and no further one begin.
  void stop();
  bool isStopped() const { return m_isStopped; }

 private:
  struct Place {
    std::weak_ptr<Occupant> occupant;
    std::string address;                        // empty where it counts for no address
    std::list<const Occupant*>::iterator self;  // in one of the lists
    bool isResting = false;
  };
  using Leaving = std::vector<std::shared_ptr<Occupant>>;

  bool freePlace(const std::string* address, Leaving& leaving);
  bool hasPlace(const std::string& address) const;
  void forget(const Occupant* occupant);
  void beginRest(Place& place);
  void endRest(Place& place);

  const std::size_t m_max;
  const std::size_t m_maxOfOne;
  std::mutex m_mutex;
  std::map<const Occupant*, Place> m_places;
  std::map<std::string, std::size_t> m_countOf;  // by address; no entry for 0
  std::list<const Occupant*> m_resting;          // the longest first
  std::list<const Occupant*> m_awake;
  std::atomic<bool> m_isStopped{false};
};

}  // namespace host

#endif
