#ifndef MIRN_HOST_SYSTEM_HEALTH_MONITOR_H
#define MIRN_HOST_SYSTEM_HEALTH_MONITOR_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <string>

#include "plugin_extensions.h"
#include "plugin_interface.h"

namespace host {

/// Asks the plug-in for its status again and again, on a thread of its own, so that whoever wants to know how
/// the process does is answered at once, even when the plug-in hangs. Safe from any thread.
class HealthMonitor {
 public:
  using Milliseconds = std::chrono::milliseconds;
  using Moment = std::chrono::steady_clock::time_point;

  struct Settings {
    Milliseconds interval{2000};         ///< Between two questions.
    Milliseconds longestSilence{30000};  ///< After this long without an answer, nothing works.
    Milliseconds oldestPicture{20000};   ///< An older one makes nobody ready.
    /// A picture costs what the machine is large: one is looked at no sooner than this after the last look,
    /// and not while the last one seen is younger than this.
    Milliseconds lookInterval{8000};
    std::function<Moment()> now = [] { return std::chrono::steady_clock::now(); };
  };

  /// `plugin` is initialised and outlives the monitor. Its picture counts where it has one.
  explicit HealthMonitor(ovra::service_plugin_interface& plugin) : HealthMonitor(plugin, Settings()) {}
  HealthMonitor(ovra::service_plugin_interface& plugin, Settings settings);
  HealthMonitor(const HealthMonitor&) = delete;
  HealthMonitor& operator=(const HealthMonitor&) = delete;
  /// Waits for a question under way.
  ~HealthMonitor();

  /// Asks from now on. Waits, at most for the interval, until the first answer is there.
  void start();

  /// Nobody is to be sent here any more.
  void announceStop();

  /// Asks no more. False when a question is still under way after `patience`.
  bool stop(Milliseconds patience);

  /// What is wrong, in words; nothing when the process works.
  std::optional<std::string> whyNotWorking() const;
  /// What keeps it from serving well; nothing when it is ready.
  std::optional<std::string> whyNotReady() const;

  /// One question, as the thread asks it.
  void ask();

 private:
  struct Answered {
    Moment moment;
    std::string objection;  ///< Empty when the plug-in works.
  };

  void run();
  void askStatus();
  void lookAtPicture();
  bool isLookDue() const;
  std::optional<std::string> whyPictureIsOld() const;

  ovra::service_plugin_interface& m_plugin;
  ovra::watched_plugin_1* const m_watched;
  const Settings m_settings;

  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  std::optional<Answered> m_answered;
  std::optional<Moment> m_looked;
  std::optional<Moment> m_pictureTaken;
  bool m_isStopAnnounced = false;
  bool m_isStopped = false;
  std::future<void> m_thread;
};

}  // namespace host

#endif
