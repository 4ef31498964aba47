#include "system/health_monitor.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace host {

namespace {

constexpr std::int32_t kWorking = 0;

std::string statusObjection(ovra::service_plugin_interface& plugin) {
  try {
    return plugin.getStatus() == kWorking ? "" : "The plug-in does not work";
  } catch (const std::exception& failure) {
    return std::string("The plug-in failed to tell its status: ") + failure.what();
  } catch (...) {
    return "The plug-in failed to tell its status";
  }
}

/// How long ago the picture was taken; nothing before the first one.
std::optional<std::chrono::milliseconds> ageOf(const ovra::data_transfer::ServiceObject& picture) {
  using std::chrono::milliseconds;
  const auto& takenAt = picture.member(L"takenAt");
  if (takenAt.isNull()) return {};
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto age = std::chrono::duration_cast<milliseconds>(now) - milliseconds(takenAt.toInt64());
  return std::max(age, milliseconds(0));
}

}  // namespace

HealthMonitor::HealthMonitor(ovra::service_plugin_interface& plugin, Settings settings)
    : m_plugin(plugin),
      m_watched(dynamic_cast<ovra::watched_plugin_1*>(&plugin)),
      m_settings(std::move(settings)) {}

HealthMonitor::~HealthMonitor() {
  stop(Milliseconds(0));
  if (m_thread.valid()) m_thread.wait();
}

void HealthMonitor::start() {
  m_thread = std::async(std::launch::async, [this] { run(); });
  std::unique_lock<std::mutex> lock(m_mutex);
  m_changed.wait_for(lock, m_settings.interval,
                     [this] { return m_answered && (m_watched == nullptr || m_looked); });
}

void HealthMonitor::announceStop() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_isStopAnnounced = true;
}

bool HealthMonitor::stop(Milliseconds patience) {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopAnnounced = true;
    m_isStopped = true;
  }
  m_changed.notify_all();
  return !m_thread.valid() || m_thread.wait_for(patience) == std::future_status::ready;
}

void HealthMonitor::run() {
  for (;;) {
    ask();
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_changed.wait_for(lock, m_settings.interval, [this] { return m_isStopped; })) return;
  }
}

void HealthMonitor::ask() {
  askStatus();
  if (isLookDue()) lookAtPicture();
}

void HealthMonitor::askStatus() {
  std::string objection = statusObjection(m_plugin);
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_answered = Answered{m_settings.now(), std::move(objection)};
  }
  m_changed.notify_all();
}

bool HealthMonitor::isLookDue() const {
  if (m_watched == nullptr) return false;
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto isRecent = [&](const std::optional<Moment>& moment) {
    return moment && m_settings.now() - *moment < m_settings.lookInterval;
  };
  return !isRecent(m_looked) && !isRecent(m_pictureTaken);
}

/// A picture that cannot be had leaves the last one to grow old.
void HealthMonitor::lookAtPicture() {
  std::optional<Milliseconds> age;
  try {
    age = ageOf(m_watched->picture());
  } catch (...) {
  }
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_looked = m_settings.now();
    if (age) m_pictureTaken = *m_looked - *age;
  }
  m_changed.notify_all();
}

std::optional<std::string> HealthMonitor::whyNotWorking() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (!m_answered) return "The plug-in has not told its status yet";
  if (m_settings.now() - m_answered->moment > m_settings.longestSilence) {
    return "The plug-in does not answer any more";
  }
  if (m_answered->objection.empty()) return {};
  return m_answered->objection;
}

std::optional<std::string> HealthMonitor::whyNotReady() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_isStopAnnounced) return "The host is about to stop";
  return whyPictureIsOld();
}

std::optional<std::string> HealthMonitor::whyPictureIsOld() const {
  if (m_watched == nullptr) return {};
  if (!m_pictureTaken) return "The plug-in has no picture of the machine yet";
  if (m_settings.now() - *m_pictureTaken > m_settings.oldestPicture) {
    return "The plug-in's picture of the machine is too old";
  }
  return {};
}

}  // namespace host
