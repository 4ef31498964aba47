#ifndef MIRN_SESSION_MIRN_SESSION_H
#define MIRN_SESSION_MIRN_SESSION_H

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

#include "change_watch.h"
#include "dated_picture.h"
#include "indexed_snapshot.h"
#include "mirn_snapshot.h"
#include "plugin_setting.h"
#include "prepared_call.h"
#include "session_actions.h"
#include "session_locks.h"
#include "snapshot_reads.h"
#include "VEXL2.h"

struct KnownTexts;

/// The back end: holds the snapshot, serves every read from it, carries out the actions, and runs the event
/// thread. Neither copied nor moved: listeners hold pointers to its interfaces.
class MirnSession : public SnapshotReads, public SessionActions {
 public:
  /// Reads the settings from their store; never fails for want of them. Makes no library call.
  MirnSession();
  /// Stops the event thread if it still runs.
  ~MirnSession() override;

  MirnSession(const MirnSession&) = delete;
  MirnSession& operator=(const MirnSession&) = delete;

  /// Begins with an empty picture, takes the first snapshot and launches the event thread; does nothing if it
  /// runs. A failed snapshot is logged and leaves the picture empty. What else goes wrong is raised, and
  /// start can be tried again: `MirnException` when the lock is not had in time, with the picture as it was;
  /// `std::system_error` when no thread can be launched; `VexException` as from `takeSnapshot`. The library
  /// must be initialised. Not for two threads at once, nor beside `stop`.
  void start();
  /// Sends away whoever waits for a change, ends the event thread and waits for it: one library wait, up to
  /// five seconds. Does nothing if it doesn't run.
  void stop();

  /// Replaces the picture by a new one and records the differences as events. A `MirnException` on the way is
  /// logged, and the old picture stays. `alreadyLocked`: the caller holds exclusive ownership.
  void refresh(bool alreadyLocked);
  /// Reads a whole picture from the library. Raises `MirnException`, or `VexException` when the library
  /// refuses to close its session.
  MirnSnapshot takeSnapshot();

  /// Renews the snapshot, then raises `MirnException` with the status's text and error id unless it is 0. For
  /// callers with exclusive ownership.
  void checkStatus(VEX_STATUS status);
  /// The same, with `errorId` in place of the status's own when the status is `specialStatus`.
  void checkStatusMapped(VEX_STATUS status, VEX_STATUS specialStatus, const char* errorId);

  /// Where the picture stands. Open while the event thread runs.
  ChangeWatch& changes() { return m_changes; }

  /// The picture in use, taken over under shared ownership.
  Picture picture() override;
  /// The same, and what is to be told of it at that moment.
  DatedPicture datedPicture();

  // IMirnSession, beside what `SnapshotReads` has
  bool setLocateTimeout(std::int64_t seconds) override;
  std::int64_t getLocateTimeout() override;

  /// The shape of every action: upgrade ownership, the one library call, exclusive ownership, the check.
  /// `precondition` runs under upgrade ownership, ahead of the call: while it looks, and until the call is
  /// answered, nobody exchanges the picture. What it raises, this raises, with nothing done.
  void carryOut(const PreparedCall& call, const std::function<void()>& precondition);

 protected:
  /// The body of the event thread.
  void eventLoop();
  /// The event thread, running.
  virtual std::thread launchEventThread();
  /// What `start` sets `m_lockTimeout` to.
  virtual std::int64_t lockTimeout() const;
  /// Records how the picture in use differs from the one before. Ahead of it, clients have the picture.
  virtual void recordEvents(const MirnSnapshot& before, const MirnSnapshot& now);

 private:
  void readSettings();
  void loadFirstSnapshot();
  void refreshUnlocked();
  void refreshLocked();
  Picture takePicture();
  /// The same where a refused close has a caller to reach: it counts as a failure, too. On the event thread
  /// it ends the process, and nothing may catch it on the way, or the process ends without a word.
  Picture takePictureForCaller();
  /// The picture in use is another one now, which differs so far. For callers with exclusive ownership.
  void notePicture(SnapshotDifference difference);
  void noteNoPicture();
  void noteFailure(const char* words);

  // SessionActions
  void carryOut(const PreparedCall& call) override;

  // Exchanged whole, and guarded by m_mutex; the picture itself does not change.
  Picture m_snapshot = std::make_shared<const IndexedSnapshot>();

  // Of the pictures so far, for the next one; see LentTexts.
  std::shared_ptr<KnownTexts> m_texts;

  ChangeWatch m_changes;

  std::mutex m_timesMutex;
  PictureTimes m_times;  // guarded by m_timesMutex; a new picture's under exclusive ownership, too

  // Written by the thread that starts and stops, read by the event thread. Not set by a start that failed.
  std::atomic<bool> m_running{false};
  std::thread m_eventThread;

  SessionMutex m_mutex;

 protected:
  std::atomic<std::int64_t> m_lockTimeout{0};  ///< Seconds; set by each start while others may read.

 private:
  std::int64_t m_locateTimeout = kLocateTimeoutDefault;  ///< Seconds; constant after construction.
};

#endif
