#include "mirn_session.h"

#include <memory>
#include <stdexcept>
#include <utility>

#include "lent_texts.h"
#include "logger.h"
#include "mirn_exception.h"
#include "plugin_log_line.h"
#include "snapshot_comparison.h"
#include "status_text.h"
#include "vex_exception.h"
#include "vex_info.h"

namespace {

constexpr std::int64_t kLockTimeout = 30;  // seconds

constexpr char kOpenFailed[] = "Failed to open a session";
constexpr char kReadFailed[] = "Error occurred while taking a snapshot";

void openLibrarySession(IVexInfo& info) {
  try {
    info.open();
  } catch (const VexException& error) {
    throw MirnException(statusToErrorId(error.status), kOpenFailed);
  }
}

/// In the order that the library's log of calls shows for every snapshot.
MirnSnapshot readAll(IVexInfo& info) {
  MirnSnapshot snapshot;
  snapshot.raids = info.getRaids();
  snapshot.controllers = info.getControllers();
  snapshot.arrays = info.getArrays(0, 0, "");
  snapshot.endDevices = info.getEndDevices(0, 0, "");
  snapshot.ports = info.getPorts(0, 0);
  snapshot.volumes = info.getVolumes(0, 0, "");
  snapshot.version = std::make_shared<Version>(info.getVersion());
  snapshot.controllerArrays = info.getControllerArrays(snapshot.controllers);
  snapshot.controllerPorts = info.getControllerPorts(snapshot.controllers);
  snapshot.controllerVolumes = info.getControllerVolumes(snapshot.controllers);
  snapshot.raidLevels = info.getRaidLevels(snapshot.raids);
  return snapshot;
}

MirnSnapshot readSnapshot(IVexInfo& info) {
  try {
    return readAll(info);
  } catch (const VexException& error) {
    throw MirnException(statusToErrorId(error.status), kReadFailed);
  } catch (const std::range_error&) {
    // Text of the library that is not UTF-8 costs the snapshot, not the process.
    throw MirnException(kErrorOperationFailed, kReadFailed);
  }
}

}  // namespace

MirnSession::MirnSession() { readSettings(); }

MirnSession::~MirnSession() { stop(); }

void MirnSession::start() {
  if (m_running) return;
  m_lockTimeout = lockTimeout();
  loadFirstSnapshot();
  m_running = true;
  try {
    m_eventThread = launchEventThread();
  } catch (...) {
    m_running = false;
    throw;
  }
  m_changes.open();
}

std::thread MirnSession::launchEventThread() { return std::thread(&MirnSession::eventLoop, this); }

std::int64_t MirnSession::lockTimeout() const { return kLockTimeout; }

void MirnSession::stop() {
  m_running = false;
  m_changes.close();
  if (m_eventThread.joinable()) m_eventThread.join();
}

Picture MirnSession::picture() {
  const SharedOwnership ownership = acquireShared(m_mutex, m_lockTimeout);
  return m_snapshot;
}

DatedPicture MirnSession::datedPicture() {
  const SharedOwnership ownership = acquireShared(m_mutex, m_lockTimeout);
  const std::lock_guard<std::mutex> lock(m_timesMutex);
  return {m_snapshot, m_times, m_changes.position()};
}

void MirnSession::loadFirstSnapshot() {
  const UniqueOwnership ownership = acquireUnique(m_mutex, m_lockTimeout);
  const Picture before = std::exchange(m_snapshot, std::make_shared<const IndexedSnapshot>());
  noteNoPicture();
  try {
    m_snapshot = takePictureForCaller();
    notePicture(differenceBetween(*before, *m_snapshot));
    return;
  } catch (const MirnException& error) {
    ovra::Logger::instance().log(LogLevel::kWarning, pluginLogLine(error.what()));
  } catch (...) {
    m_changes.raise(differenceBetween(*before, *m_snapshot));
    throw;
  }
  m_changes.raise(differenceBetween(*before, *m_snapshot));
}

Picture MirnSession::takePicture() {
  try {
    return std::make_shared<const IndexedSnapshot>(takeSnapshot());
  } catch (const MirnException& error) {
    noteFailure(error.what());
    throw;
  }
}

Picture MirnSession::takePictureForCaller() {
  try {
    return takePicture();
  } catch (const VexException& error) {
    noteFailure(error.what());
    throw;
  }
}

MirnSnapshot MirnSession::takeSnapshot() {
  const LentTexts known(m_texts);
  const std::unique_ptr<IVexInfo> info = makeVexInfo(known.texts());
  openLibrarySession(*info);
  MirnSnapshot snapshot = readSnapshot(*info);
  finishSnapshot(snapshot);
  // Outside the handlers above: a refused close reaches the caller as it is.
  info->close();
  return snapshot;
}
