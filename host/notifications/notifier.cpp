#include "notifications/notifier.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <utility>

#include "identity/base64url.h"
#include "system/report.h"

namespace host {

namespace {

constexpr std::size_t kIdBytes = 16;

/// For a thread to wait at once; longer than that is waited for in parts.
constexpr std::chrono::minutes kLongestWait{1};

const insight::ObjectRef kObject{"service", L"", L"notifications"};

boost::json::array formsOf(const std::vector<Delivery>& deliveries) {
  boost::json::array forms;
  for (const Delivery& each : deliveries) {
    forms.push_back(boost::json::object{{"delivery", each.id}, {"event", each.event}, {"alarm", each.alarm}});
  }
  return forms;
}

}  // namespace

Notifier::Notifier(Targets targets, Settings settings)
    : m_targets(std::move(targets)),
      m_settings(std::move(settings)),
      m_judge(m_settings.leastSeverity),
      m_queue(m_targets.size(), m_settings.queue),
      m_failures(m_targets.size()) {}

Notifier::~Notifier() { stop(); }

void Notifier::start(NoteTaker taker) {
  m_taker = std::move(taker);
  for (std::size_t i = 0; i < m_targets.size(); ++i) m_threads.emplace_back([this, i] { run(i); });
}

void Notifier::stop() {
  {
    const Lock lock(m_mutex);
    if (std::exchange(m_isStopping, true)) return;
  }
  m_changed.notify_all();
  for (const auto& target : m_targets) target->stop();
  for (std::thread& thread : m_threads) thread.join();
  for (std::size_t i = 0; i < m_targets.size(); ++i) {
    Lock lock(m_mutex);
    const std::vector<Delivery> left = m_queue.takeAll(i);
    lock.unlock();
    note(i, "dropped", "the host stops", left);
  }
}

void Notifier::recall(const std::vector<insight::Alarm>& open) {
  for (const insight::Alarm& alarm : open) {
    const auto news = [&] {
      const Lock lock(m_mutex);
      return m_judge.recall(alarm);
    }();
    add(news);
  }
}

void Notifier::hear(const insight::AlarmChange& change) {
  const auto news = [&] {
    const Lock lock(m_mutex);
    return m_judge.judge(change);
  }();
  add(news);
}

void Notifier::add(const std::optional<AlarmNews>& news) {
  if (!news) return;
  for (std::size_t i = 0; i < m_targets.size(); ++i) {
    const std::string id = randomText(kIdBytes);
    Delivery delivery{id, news->alarm.id(), news->event,
                      bodyOf(*news, id, m_settings.hostName, m_settings.time() / kTicksPerMillisecond)};
    Lock lock(m_mutex);
    if (m_isStopping) {
      lock.unlock();
      note(i, "dropped", "the host stops", {delivery});
      continue;
    }
    const auto loss = m_queue.add(i, std::move(delivery), m_settings.clock());
    lock.unlock();
    if (loss) note(loss->target, "dropped", "too much waits", {loss->delivery});
  }
  m_changed.notify_all();
}

std::optional<insight::Cause> Notifier::cause() const {
  const Lock lock(m_mutex);
  const auto now = m_settings.clock();
  std::string text;
  for (std::size_t i = 0; i < m_targets.size(); ++i) {
    if (!m_failures[i].isLong(now)) continue;
    text += (text.empty() ? "Alarms are not told: " : "; ") + m_targets[i]->name() + ": " +
            m_failures[i].reason();
  }
  if (text.empty()) return {};
  insight::Cause cause;
  cause.kind = kNotificationKind;
  cause.severity = insight::Severity::kWarning;
  cause.object = kObject;
  cause.text = text + '.';
  return cause;
}

std::optional<DeliveryQueue::Moment> Notifier::nextTurn(std::size_t index) const {
  const Lock lock(m_mutex);
  return m_queue.nextTurn(index);
}

void Notifier::run(std::size_t index) {
  Lock lock(m_mutex);
  while (!m_isStopping) {
    dropExpired(lock, index);
    if (const auto delivery = m_queue.begin(index, m_settings.clock())) {
      tellOne(lock, index, *delivery);
    } else {
      await(lock, index);
    }
  }
}

void Notifier::await(Lock& lock, std::size_t index) {
  if (m_isStopping) return;
  const auto turn = m_queue.nextTurn(index);
  const auto now = m_settings.clock();
  if (turn && *turn <= now) return;
  DeliveryQueue::Duration wait = kLongestWait;
  if (turn) wait = std::min(wait, *turn - now);
  m_changed.wait_for(lock, wait);
}

void Notifier::tellOne(Lock& lock, std::size_t index, const Delivery& delivery) {
  lock.unlock();
  const std::string failure = m_targets[index]->tell(delivery);
  lock.lock();
  if (m_isStopping && !failure.empty()) return m_queue.breakOff(index);
  const bool isNew = m_failures[index].take(failure, m_settings.clock());
  const bool isLost = settle(index, failure);
  lock.unlock();
  if (isNew)
    report(m_targets[index]->name() + ": " + (failure.empty() ? "it is told of alarms again" : failure));
  if (isLost) note(index, "failed", failure, {delivery});
  lock.lock();
}

/// Whether nobody tries it again.
bool Notifier::settle(std::size_t index, const std::string& failure) {
  const bool isRetried = m_targets[index]->isRetried();
  if (failure.empty() || !isRetried) {
    m_queue.finish(index);
  } else {
    m_queue.fail(index, m_settings.clock());
  }
  return !failure.empty() && !isRetried;
}

void Notifier::dropExpired(Lock& lock, std::size_t index) {
  const std::vector<Delivery> expired = m_queue.takeExpired(index, m_settings.clock());
  if (expired.empty()) return;
  const std::string reason = m_failures[index].reason();
  lock.unlock();
  note(index, "dropped", "it was tried for too long: " + reason, expired);
  lock.lock();
}

/// To the log and the history.
void Notifier::note(std::size_t index, const std::string& outcome, const std::string& reason,
                    const std::vector<Delivery>& deliveries) const {
  if (deliveries.empty()) return;
  const std::string& name = m_targets[index]->name();
  report(name + ": notifications that it did not take: " + std::to_string(deliveries.size()) + " (" + reason +
         ')');
  if (!m_taker) return;
  insight::ServiceNote note;
  note.object = kObject;
  note.operation = kNotificationKind;
  note.outcome = outcome;
  note.details = {{"target", name},
                  {"reason", reason},
                  {"count", deliveries.size()},
                  {"deliveries", formsOf(deliveries)}};
  m_taker(note);
}

}  // namespace host
