#ifndef MIRN_HOST_NOTIFICATIONS_NOTIFIER_H
#define MIRN_HOST_NOTIFICATIONS_NOTIFIER_H

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "alarms/alarm_listener.h"
#include "health/severity.h"
#include "identity/steady_clock.h"
#include "notifications/alarm_news.h"
#include "notifications/delivery_queue.h"
#include "notifications/target.h"
#include "notifications/target_failure.h"
#include "service/service_note.h"
#include "tick_clock.h"

namespace host {

/// Tells targets of alarms, each on a thread of its own, and tries again where that fails. What is not told
/// in the end, and a target that fails for long, is told in turn. Safe from any thread.
class Notifier final : public insight::IAlarmListener {
 public:
  /// Takes what the history is to keep. Called from any thread, and raises nothing.
  using NoteTaker = std::function<void(const insight::ServiceNote&)>;
  using Targets = std::vector<std::unique_ptr<INotificationTarget>>;

  struct Settings {
    insight::Severity leastSeverity = insight::Severity::kWarning;
    std::string hostName;
    TickClock time = currentTicks;
    SteadyClock clock = [] { return std::chrono::steady_clock::now(); };
    DeliveryQueue::Settings queue{};
  };

  Notifier(Targets targets, Settings settings);
  Notifier(const Notifier&) = delete;
  Notifier& operator=(const Notifier&) = delete;
  ~Notifier() override;

  /// What is heard is told from now on; what was heard before has waited. Once.
  void start(NoteTaker taker);
  /// Within moments, whatever targets do; what waits still is told as dropped.
  void stop();

  /// The clock has been moved.
  void wake() { m_changed.notify_all(); }
  /// When there is something to do for the target; nothing where nothing waits for it.
  std::optional<DeliveryQueue::Moment> nextTurn(std::size_t index) const;

  void recall(const std::vector<insight::Alarm>& open) override;
  void hear(const insight::AlarmChange& change) override;
  std::optional<insight::Cause> cause() const override;

 private:
  using Lock = std::unique_lock<std::mutex>;

  void add(const std::optional<AlarmNews>& news);
  void run(std::size_t index);
  void tellOne(Lock& lock, std::size_t index, const Delivery& delivery);
  void dropExpired(Lock& lock, std::size_t index);
  void await(Lock& lock, std::size_t index);
  bool settle(std::size_t index, const std::string& failure);
  void note(std::size_t index, const std::string& outcome, const std::string& reason,
            const std::vector<Delivery>& deliveries) const;

  const Targets m_targets;
  const Settings m_settings;
  NoteTaker m_taker;

  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  AlarmJudge m_judge;
  DeliveryQueue m_queue;
  std::vector<TargetFailure> m_failures;  ///< One a target.
  bool m_isStopping = false;
  std::vector<std::thread> m_threads;
};

}  // namespace host

#endif
