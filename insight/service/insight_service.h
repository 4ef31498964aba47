#ifndef MIRN_INSIGHT_SERVICE_INSIGHT_SERVICE_H
#define MIRN_INSIGHT_SERVICE_INSIGHT_SERVICE_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "alarms/alarm_listener.h"
#include "alarms/alarm_tracker.h"
#include "health/health_report.h"
#include "history/history.h"
#include "jobs/job_tracker.h"
#include "plugin_extensions.h"
#include "service/entries.h"
#include "service/history_past.h"
#include "ServiceObject.h"
#include "stream/stream.h"
#include "view/machine_view_source.h"

namespace insight {

/// How many there were, by kind and outcome.
using EndedJobs = std::map<std::pair<std::string, std::string>, std::uint64_t>;

/// What was found at a look at the machine: all of one position. Plain value.
struct Findings {
  ovra::PluginPosition position;
  std::vector<Alarm> alarms;                     ///< The open ones, by their ids.
  std::vector<Job> jobs;                         ///< The running ones, in the order of their volumes.
  std::shared_ptr<const MachineView> machine{};  ///< Null before the first look.
  EndedJobs endedJobs{};                         ///< That were seen to end so far.
  std::uint64_t failedPictures = 0;  ///< At how many looks a further try to renew the picture had failed.
};

/// Watches a plug-in's machine on a thread of its own, and remembers: what is wrong becomes alarms, what is
/// under way jobs, what happens the history, all of it told on in the stream. Safe from any thread.
class InsightService {
 public:
  struct Settings {
    std::filesystem::path historyPath;    ///< Empty: nothing is kept.
    std::function<std::int64_t()> nowMs;  ///< Milliseconds since 1970, UTC.
    HistoryBounds bounds{};
  };

  /// `plugin` and `views` outlive the service; `description` is what the plug-in tells of itself.
  InsightService(ovra::watched_plugin_1& plugin, MachineViewSource& views,
                 const ovra::data_transfer::ServiceObject& description, Settings settings);
  InsightService(const InsightService&) = delete;
  InsightService& operator=(const InsightService&) = delete;
  /// Waits for its thread, which may be inside the plug-in for as long as `kTurn`.
  ~InsightService();

  /// Who hears of alarms from now on, and of those that an earlier process left open. Ahead of all looks.
  void tellAlarmsTo(std::shared_ptr<IAlarmListener> listener);

  /// The machine has been looked at when it comes back, and is watched from now on.
  void start();

  /// Looks no more, and ends those who listen to the stream with a word. Changes are still kept.
  void announceStop();

  /// As the machine stands now.
  HealthReport health() const;

  /// Of the last look. Never null.
  std::shared_ptr<const Findings> findings() const;
  std::int64_t nowMs() const { return m_settings.nowMs(); }

  /// The alarm as it is then; nothing where no such alarm is open. Who comes second changes nothing.
  std::optional<Alarm> acknowledge(const std::string& id, const std::string& by);

  /// It is kept before this comes back, where anything can be kept. Gives the number to end the change by.
  std::uint64_t beginChange(const ClientChange& change);
  /// `details` tell how it went, and stand beside those of the change.
  void endChange(std::uint64_t number, const ClientChange& change, bool isDone,
                 const boost::json::object& details);

  /// For the history, and whoever listens to the stream.
  void note(const ServiceNote& note);

  History& history() { return *m_history; }
  Stream& stream() { return *m_stream; }

  /// One look at the machine, as the thread takes it.
  void look();

 private:
  using Clock = std::chrono::steady_clock;

  void recallCalls();
  void run();
  void takeTurn();
  void pauseUntil(Clock::time_point end);
  bool isStopping() const;
  std::vector<Cause> ownCauses() const;
  std::uint64_t addEvents(HistoryBatch& batch);
  ObjectRef named(ObjectRef object) const;

  // Under the lock.
  void addJobs(HistoryBatch& batch, const MachineView& machine, bool isKnown, std::int64_t nowMs);
  void addAlarms(HistoryBatch& batch, const std::vector<AlarmChange>& changes, std::int64_t nowMs);
  void publish(const ovra::PluginPosition& position);

  ovra::watched_plugin_1& m_plugin;
  MachineViewSource& m_views;
  const Settings m_settings;
  const std::string m_epoch;  ///< Of what is numbered here.
  HistoryPast m_past;
  const std::unique_ptr<Stream> m_stream;
  const std::unique_ptr<History> m_history;

  std::shared_ptr<IAlarmListener> m_listener;  ///< Null where there is none.

  // The thread's.
  std::uint64_t m_lastEvent = 0;  ///< Of the plug-in, that is told.
  ovra::PluginPosition m_known;   ///< At the last look.
  Clock::time_point m_nextLook{};
  Clock::time_point m_earliestLook{};

  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  EntryNumbers m_numbers;
  AlarmTracker m_alarms;
  JobTracker m_jobs;
  EndedJobs m_endedJobs;
  std::uint64_t m_failedPictures = 0;
  std::shared_ptr<const Findings> m_findings;
  std::shared_ptr<const MachineView> m_view;  ///< Of the last look; null before it.
  bool m_isStopping = false;
  std::thread m_thread;
};

}  // namespace insight

#endif
