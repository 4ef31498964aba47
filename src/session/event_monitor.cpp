#include <utility>
#include <vector>

#include "event_comparison.h"
#include "event_journal.h"
#include "logger.h"
#include "mirn_exception.h"
#include "mirn_session.h"
#include "plugin_log_line.h"

namespace {

constexpr std::uint32_t kEventWaitMilliseconds = 5000;

void recordDifferences(const MirnSnapshot& before, const std::vector<Volume>& volumes,
                       const std::vector<EndDevice>& endDevices) {
  EventJournal& journal = EventJournal::instance();
  compareVolumes(before.volumes, volumes, journal);
  compareEndDevices(before.endDevices, endDevices, journal);
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
/// comparison runs without the lock, on a copy of what it looks at.
void MirnSession::refreshUnlocked() {
  MirnSnapshot exchanged;
  std::vector<Volume> volumes;
  std::vector<EndDevice> endDevices;
  {
    UpgradeOwnership ownership = acquireUpgradeUntimed(m_mutex);
    exchanged = takeSnapshot();
    volumes = exchanged.volumes;
    endDevices = exchanged.endDevices;
    const ExclusiveStep exclusive(ownership);
    std::swap(m_snapshot, exchanged);
  }
  recordDifferences(exchanged, volumes, endDevices);
}

void MirnSession::refreshLocked() {
  MirnSnapshot exchanged = takeSnapshot();
  std::swap(m_snapshot, exchanged);
  recordDifferences(exchanged, m_snapshot.volumes, m_snapshot.endDevices);
}
