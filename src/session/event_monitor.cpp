#include <memory>
#include <utility>

#include "event_comparison.h"
#include "event_journal.h"
#include "logger.h"
#include "mirn_exception.h"
#include "mirn_session.h"
#include "plugin_log_line.h"
#include "snapshot_comparison.h"
#include "tick_clock.h"

namespace {

constexpr std::uint32_t kEventWaitMilliseconds = 5000;

void logFailedRefresh(const MirnException& error) {
  ovra::Logger::instance().log(LogLevel::kWarning, pluginLogLine(error.what()));
}

}  // namespace

void MirnSession::eventLoop() {
  VEX_HANDLE handle = 0;
  VexGetEventHandle(&handle);
  while (m_running) {
    const VEX_STATUS status = VexEventWait(kEventWaitMilliseconds, handle);
    if (status == VEX_STATUS_SUCCESS || status == VEX_STATUS_TIMEOUT) refresh(false);
  }
  VexFreeEventHandle(handle);
}

void MirnSession::refresh(bool alreadyLocked) {
  try {
    if (alreadyLocked) {
      refreshLocked();
    } else {
      refreshUnlocked();
    }
  } catch (const MirnException& error) {
    logFailedRefresh(error);
  }
}

/// Readers go on with the old picture while the new one is taken and looked at; only the exchange shuts them
/// out. Events are recorded without the lock.
void MirnSession::refreshUnlocked() {
  Picture now;
  Picture exchanged;
  {
    UpgradeOwnership ownership = acquireUpgradeUntimed(m_mutex);
    now = exchanged = takePicture();
    const SnapshotDifference difference = differenceBetween(*m_snapshot, *now);
    const ExclusiveStep exclusive(ownership);
    std::swap(m_snapshot, exchanged);
    notePicture(difference);
  }
  recordEvents(*exchanged, *now);
}

void MirnSession::refreshLocked() {
  Picture exchanged = takePictureForCaller();
  const SnapshotDifference difference = differenceBetween(*m_snapshot, *exchanged);
  std::swap(m_snapshot, exchanged);
  notePicture(difference);
  recordEvents(*exchanged, *m_snapshot);
}

void MirnSession::recordEvents(const MirnSnapshot& before, const MirnSnapshot& now) {
  EventJournal& journal = EventJournal::instance();
  compareVolumes(before.volumes, now.volumes, journal);
  compareEndDevices(before.endDevices, now.endDevices, journal);
  m_changes.announceEvents();
}

void MirnSession::notePicture(SnapshotDifference difference) {
  m_changes.raise(difference);
  const std::lock_guard<std::mutex> lock(m_timesMutex);
  m_times = {currentTicks(), boost::none};
}

void MirnSession::noteNoPicture() {
  const std::lock_guard<std::mutex> lock(m_timesMutex);
  m_times = {};
}

void MirnSession::noteFailure(const char* words) {
  const std::lock_guard<std::mutex> lock(m_timesMutex);
  m_times.failure = PictureTimes::Failure{currentTicks(), words};
}
