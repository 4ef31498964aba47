#include <memory>
#include <utility>

#include "event_comparison.h"
#include "event_journal.h"
#include "logger.h"
#include "mirn_exception.h"
#include "mirn_session.h"
#include "plugin_log_line.h"

namespace {

constexpr std::uint32_t kEventWaitMilliseconds = 5000;

void recordDifferences(const MirnSnapshot& before, const MirnSnapshot& now) {
  EventJournal& journal = EventJournal::instance();
  compareVolumes(before.volumes, now.volumes, journal);
  compareEndDevices(before.endDevices, now.endDevices, journal);
}

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

/// Readers go on with the old picture while the new one is taken; only the exchange shuts them out. The
/// comparison runs without the lock.
void MirnSession::refreshUnlocked() {
  Picture now;
  Picture exchanged;
  {
    UpgradeOwnership ownership = acquireUpgradeUntimed(m_mutex);
    now = exchanged = std::make_shared<const IndexedSnapshot>(takeSnapshot());
    const ExclusiveStep exclusive(ownership);
    std::swap(m_snapshot, exchanged);
  }
  recordDifferences(*exchanged, *now);
}

void MirnSession::refreshLocked() {
  Picture exchanged = std::make_shared<const IndexedSnapshot>(takeSnapshot());
  std::swap(m_snapshot, exchanged);
  recordDifferences(*exchanged, *m_snapshot);
}
