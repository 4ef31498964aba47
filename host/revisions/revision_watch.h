#ifndef MIRN_HOST_REVISIONS_REVISION_WATCH_H
#define MIRN_HOST_REVISIONS_REVISION_WATCH_H

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>

#include "plugin_extensions.h"

namespace host {

/// Wakes whoever waits for a plug-in's next revision; one thread for all of them, which sits in the plug-in
/// while somebody waits. Safe from any thread.
class RevisionWatch {
 public:
  using Wake = std::function<void()>;

  /// `plugin` is initialised and outlives the watch; at most `most` wait.
  RevisionWatch(ovra::watched_plugin_1& plugin, std::size_t most);
  RevisionWatch(const RevisionWatch&) = delete;
  RevisionWatch& operator=(const RevisionWatch&) = delete;
  /// Waits for the thread.
  ~RevisionWatch();

  /// The place of somebody who waits, until it goes.
  class Place {
   public:
    ~Place();
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    /// Calls `wake` once, on any thread, when the plug-in's revision is another than that of `known`, or its
    /// sequence is where `countsEvents`; from within where that is so already. Takes the place of an earlier
    /// call. `wake` raises nothing, comes back at once, and may come late, just after the place has gone.
    void await(const ovra::PluginPosition& known, bool countsEvents, Wake wake);

   private:
    friend class RevisionWatch;
    explicit Place(RevisionWatch& watch);

    RevisionWatch& m_watch;
    ovra::PluginPosition m_known{};
    bool m_countsEvents = false;
    Wake m_wake{};  // empty while nothing is awaited
    std::list<Place*>::iterator m_self{};
  };

  /// Null when too many wait.
  std::unique_ptr<Place> takePlace();

  /// The thread ends as soon as the plug-in lets it go, which `finish` does at once.
  void announceStop();

 private:
  void run();
  void awaitChange();
  void pause(std::unique_lock<std::mutex>& lock);
  bool isAwaited() const;
  std::list<Wake> takeWoken(const ovra::PluginPosition& now);

  ovra::watched_plugin_1& m_plugin;
  const std::size_t m_most;
  std::mutex m_mutex;
  std::condition_variable m_changed;
  std::list<Place*> m_places;
  bool m_isStopping = false;
  std::thread m_thread;
};

}  // namespace host

#endif
