#ifndef MIRN_SESSION_CHANGE_WATCH_H
#define MIRN_SESSION_CHANGE_WATCH_H

#include <atomic>
#include <cstdint>
#include <string>

#include "plugin_extensions.h"
#include "snapshot_difference.h"

/// Where a session's picture stands, and those who wait for it to go on. Every operation is safe from any
/// thread and takes no lock but the watch's own, so that it may be used under the session's.
///
/// All watches of the module share one epoch, and draw their numbers from one store: none falls when a
/// session ends and another begins.
class ChangeWatch {
 public:
  /// Nobody waits before `open`.
  ChangeWatch();
  /// As `close`.
  ~ChangeWatch();
  ChangeWatch(const ChangeWatch&) = delete;
  ChangeWatch& operator=(const ChangeWatch&) = delete;

  /// Raises `std::runtime_error` when the system has no randomness for the epoch.
  static const std::wstring& epoch();

  /// The numbers are of one moment. The last event is that of the module's journal.
  ovra::PluginPosition position() const;

  /// True as soon as the epoch, the revision or the sequence differs from that of `known`; otherwise false
  /// when `milliseconds` have passed, and without a wait while the watch is closed.
  bool waitForChange(const ovra::PluginPosition& known, std::int64_t milliseconds);

  /// How many wait now.
  std::uint64_t waiters() const;

  /// The picture is exchanged for one that differs so far. For callers with exclusive ownership of the
  /// picture, so that position and picture belong together.
  void raise(SnapshotDifference difference);
  /// Events may have been added to the journal.
  void announceEvents();

  /// From now on waiting is possible.
  void open();
  /// Sends all waiters away, and returns when the last has left. Not for two threads at once, and not
  /// beside `open`.
  void close();

 private:
  bool differsFrom(const ovra::PluginPosition& known) const;

  // Guarded by the module's one mutex.
  std::uint64_t m_revision;
  std::uint64_t m_structure;
  std::uint64_t m_waiters = 0;
  std::atomic<bool> m_open{false};  ///< Read without the mutex by `close`.
};

#endif
