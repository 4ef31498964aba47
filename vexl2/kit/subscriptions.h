#ifndef MIRN_VEXL2_KIT_SUBSCRIPTIONS_H
#define MIRN_VEXL2_KIT_SUBSCRIPTIONS_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>

#include "session_handles.h"

namespace vexl2 {

/// Event handles: who is told that something has changed, and how they wait for it. Nothing is lost between
/// two waits. Every function is called under the owner's lock.
class Subscriptions {
 public:
  using Clock = std::chrono::steady_clock;
  using Instant = Clock::time_point;
  using Lock = std::unique_lock<std::mutex>;

  /// What a waiter does before it looks for news: brings the library up to date, which may tell of changes,
  /// and returns the instant at which that is worth doing again.
  using Look = std::function<Instant()>;

  /// `handles` outlives this.
  explicit Subscriptions(SessionHandles& handles, std::function<Instant()> now = Clock::now);

  /// Told of what changes from now on.
  Handle add();

  /// Refused with 3 when there is no such subscription; whoever waits on it gets 3, too.
  void remove(Handle subscription);

  /// The library ends: all waits answer 12, also when the library has begun anew before they wake.
  void clear();

  /// Something has changed.
  void tell();

  /// Every waiter looks again: the time at which something happens may have come nearer.
  void lookAgain() { m_changed.notify_all(); }

  /// No wait lasts longer, also those that are under way.
  void cap(std::chrono::milliseconds longest);
  std::chrono::milliseconds longest() const { return m_cap; }

  /// Blocks until something has changed since the last wait of the subscription, or since it began: 0. 9 when
  /// `timeout` has passed, 12 when the library ended, 3 for a handle that is no subscription. The lock is
  /// given up while it sleeps.
  Status wait(Lock& lock, Handle subscription, std::chrono::milliseconds timeout, const Look& look);

 private:
  bool takeNews(Handle subscription);

  SessionHandles& m_handles;
  std::function<Instant()> m_now;
  std::condition_variable m_changed;
  std::map<Handle, std::uint64_t> m_told;  ///< the changes that each has been told of
  std::uint64_t m_changes = 0;
  std::uint64_t m_endings = 0;
  std::chrono::milliseconds m_cap = std::chrono::milliseconds(0xFFFFFFFF);
};

}  // namespace vexl2

#endif
