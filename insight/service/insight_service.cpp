#include "service/insight_service.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "health/machine_causes.h"
#include "history/fresh_epoch.h"
#include "jobs/operation_works.h"
#include "service/plugin_events.h"
#include "text.h"
#include "view/object_form.h"
#include "view/object_path.h"

namespace insight {

namespace {

/// How long the thread stays in the plug-in, at most.
constexpr std::chrono::milliseconds kTurn{1000};

/// How long it does not look where nothing changes, since a picture grows old, and a try to renew it fails,
/// without a word: longer where a look takes long, so that it takes a twentieth of a processor.
constexpr std::chrono::milliseconds kShortestRest{5000};
constexpr std::chrono::milliseconds kLongestRest{15000};
constexpr int kRestToQuietLook = 19;

/// Where change follows change, looks take a quarter of a processor at most.
constexpr int kRestToLook = 3;

/// For a change to be on the disk before it is handed on.
constexpr History::Milliseconds kPatience{2000};

constexpr std::uint64_t kEventsAtOnce = 1000;

bool differs(const ovra::PluginPosition& one, const ovra::PluginPosition& other) {
  return one.revision != other.revision || one.sequence != other.sequence || one.epoch != other.epoch;
}

std::vector<Alarm> alarmsIn(const History& history) {
  std::vector<Alarm> alarms;
  for (const LastingRecord& record : history.start().alarms) alarms.push_back(alarmOf(record));
  return alarms;
}

std::vector<Job> jobsIn(const History& history) {
  std::vector<Job> jobs;
  for (const LastingRecord& record : history.start().jobs) jobs.push_back(jobOf(record));
  return jobs;
}

}  // namespace

InsightService::InsightService(ovra::watched_plugin_1& plugin, MachineViewSource& views,
                               const ovra::data_transfer::ServiceObject& description, Settings settings)
    : m_plugin(plugin),
      m_views(views),
      m_settings(std::move(settings)),
      m_epoch(freshEpoch()),
      m_stream(std::make_unique<Stream>(m_settings.historyPath.empty() ? nullptr : &m_past)),
      m_history(std::make_unique<History>([this] {
        History::Settings history;
        history.path = m_settings.historyPath;
        history.bounds = m_settings.bounds;
        history.nowMs = m_settings.nowMs;
        history.listener = [this](const std::string& epoch, const Entry& entry) {
          m_stream->tell(epoch, entry);
        };
        return history;
      }())),
      m_numbers(m_epoch),
      m_alarms(alarmsIn(*m_history)),
      m_jobs(m_epoch, operationWorksOf(description), jobsIn(*m_history)),
      m_findings(std::make_shared<const Findings>()) {
  m_past.use(*m_history);
  recallCalls();
}

InsightService::~InsightService() {
  announceStop();
  if (m_thread.joinable()) m_thread.join();
}

/// Whoever ran before was ended amid them.
void InsightService::recallCalls() {
  HistoryBatch ends;
  for (const Entry& call : m_history->start().calls) ends.entries.push_back(unknownEndOf(call, nowMs()));
  m_history->add(std::move(ends));
}

void InsightService::tellAlarmsTo(std::shared_ptr<IAlarmListener> listener) {
  m_listener = std::move(listener);
  m_listener->recall(m_alarms.open());
}

void InsightService::start() {
  try {
    look();
  } catch (const std::exception&) {  // the thread tries again
  }
  m_thread = std::thread([this] { run(); });
}

void InsightService::announceStop() {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopping = true;
  }
  m_changed.notify_all();
  m_stream->stop();
}

bool InsightService::isStopping() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_isStopping;
}

void InsightService::run() {
  while (!isStopping()) {
    try {
      takeTurn();
    } catch (const std::exception&) {  // what keeps the plug-in from telling will show in its picture
      pauseUntil(Clock::now() + kTurn);
    }
  }
}

void InsightService::takeTurn() {
  const Clock::time_point begin = Clock::now();
  if (begin >= m_nextLook || differs(m_known, m_plugin.position())) {
    pauseUntil(m_earliestLook);
    if (isStopping()) return;
    look();
  }
  if (m_plugin.waitForChange(m_known, kTurn.count())) return;
  if (Clock::now() - begin < kTurn / 2) pauseUntil(begin + kTurn);  // it waits for nobody, as at its end
}

void InsightService::pauseUntil(Clock::time_point end) {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_changed.wait_until(lock, end, [this] { return m_isStopping; });
}

void InsightService::look() {
  const Clock::time_point begin = Clock::now();
  const std::shared_ptr<const MachineView> machine = m_views.view();
  const std::int64_t now = nowMs();
  HistoryBatch batch;
  const std::uint64_t lastEvent = addEvents(batch);
  const auto since1970 = static_cast<std::uint64_t>(now);
  const HealthReport report = healthOf(*machine, since1970, ownCauses());
  const bool isKnown = !isOld(*machine, since1970);
  const bool hasMoved = differs(m_known, machine->position);
  std::vector<AlarmChange> alarms;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (machine->failedAt && (!m_view || machine->failedAt != m_view->failedAt)) ++m_failedPictures;
    m_view = machine;
    addJobs(batch, *machine, isKnown, now);
    alarms = m_alarms.look(report.causes, isKnown, now);
    addAlarms(batch, alarms, now);
    publish(machine->position);
    if (!batch.isEmpty()) m_history->add(std::move(batch));
  }
  // Not before all is with the history: a look that fails is taken again, and loses nothing.
  m_lastEvent = lastEvent;
  m_known = machine->position;
  if (m_listener) {
    for (const AlarmChange& change : alarms) m_listener->hear(change);
  }
  if (hasMoved) m_stream->tellPosition(formOf(machine->position));
  const Clock::time_point end = Clock::now();
  m_earliestLook = end + kRestToLook * (end - begin);
  m_nextLook =
      end + std::clamp<Clock::duration>(kRestToQuietLook * (end - begin), kShortestRest, kLongestRest);
}

/// Gives the number of the last one.
std::uint64_t InsightService::addEvents(HistoryBatch& batch) {
  const std::string epoch = wideToUtf8(m_plugin.position().epoch);
  for (std::uint64_t last = m_lastEvent;;) {
    PluginEvents part = pluginEventsOf(m_plugin.eventsAfter(last, kEventsAtOnce), epoch);
    if (part.oldest > last + 1) {
      const std::lock_guard<std::mutex> lock(m_mutex);
      batch.entries.push_back(entryOfLostEvents(part.oldest - last - 1, m_numbers, nowMs()));
    }
    if (part.entries.empty()) return last;
    last = part.entries.back().sequence;
    std::move(part.entries.begin(), part.entries.end(), std::back_inserter(batch.entries));
  }
}

void InsightService::addJobs(HistoryBatch& batch, const MachineView& machine, bool isKnown,
                             std::int64_t nowMs) {
  for (const JobChange& change : m_jobs.look(machine, isKnown, nowMs)) {
    if (change.step == JobStep::kEnded) ++m_endedJobs[{change.job.kind, change.job.outcome}];
    if (change.step != JobStep::kProgressed) batch.entries.push_back(entryOf(change, m_numbers, nowMs));
    batch.jobs.push_back(recordOf(change.job));
  }
}

void InsightService::addAlarms(HistoryBatch& batch, const std::vector<AlarmChange>& changes,
                               std::int64_t nowMs) {
  for (const AlarmChange& change : changes) {
    batch.entries.push_back(entryOf(change, m_numbers, nowMs));
    batch.alarms.push_back(recordOf(change.alarm));
  }
}

void InsightService::publish(const ovra::PluginPosition& position) {
  m_findings = std::make_shared<const Findings>(
      Findings{position, m_alarms.open(), m_jobs.running(), m_view, m_endedJobs, m_failedPictures});
}

std::vector<Cause> InsightService::ownCauses() const {
  std::vector<Cause> causes;
  if (auto cause = m_history->cause()) causes.push_back(std::move(*cause));
  if (m_listener) {
    if (auto cause = m_listener->cause()) causes.push_back(std::move(*cause));
  }
  return causes;
}

void InsightService::note(const ServiceNote& note) {
  HistoryBatch batch;
  const std::lock_guard<std::mutex> lock(m_mutex);
  batch.entries.push_back(entryOf(note, m_numbers, nowMs()));
  m_history->add(std::move(batch));
}

HealthReport InsightService::health() const {
  return healthOf(*m_views.view(), static_cast<std::uint64_t>(nowMs()), ownCauses());
}

std::shared_ptr<const Findings> InsightService::findings() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_findings;
}

std::optional<Alarm> InsightService::acknowledge(const std::string& id, const std::string& by) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto change = m_alarms.acknowledge(id, by, nowMs());
  if (change) {
    publish(m_findings->position);
    HistoryBatch batch;
    batch.entries.push_back(entryOf(*change, m_numbers, nowMs()));
    batch.alarms.push_back(recordOf(change->alarm));
    m_history->add(std::move(batch));
  }
  const Alarm* const alarm = m_alarms.find(id);
  return alarm == nullptr ? std::nullopt : std::optional<Alarm>(*alarm);
}

/// As the machine called it at the last look.
ObjectRef InsightService::named(ObjectRef object) const {
  std::shared_ptr<const MachineView> machine;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    machine = m_view;
  }
  if (!machine || object.type.empty() || !object.name.empty()) return object;
  const std::wstring type(object.type.begin(), object.type.end());
  return objectNamed(*machine, type, object.id).value_or(std::move(object));
}

std::uint64_t InsightService::beginChange(const ClientChange& change) {
  Entry entry = entryOf(change, "begun", nowMs());
  entry.object = named(entry.object);
  entry.epoch = m_epoch;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    entry.sequence = m_numbers.nextPair();
    const std::string volume = change.object.type == "volume" ? wideToUtf8(change.object.id) : std::string();
    m_jobs.calls().begin(
        {entry.sequence, change.actor, change.operation, volume, change.cancels, entry.atMs});
  }
  const std::uint64_t number = entry.sequence;
  m_history->addAndWait({{std::move(entry)}, {}, {}}, kPatience);
  return number;
}

void InsightService::endChange(std::uint64_t number, const ClientChange& change, bool isDone,
                               const boost::json::object& details) {
  Entry entry = entryOf(change, isDone ? "done" : "refused", nowMs());
  entry.object = named(entry.object);
  entry.epoch = m_epoch;
  entry.sequence = number + 1;
  for (const auto& [name, value] : details) entry.body[name] = value;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_jobs.calls().end(number, isDone);
  }
  m_history->addAndWait({{std::move(entry)}, {}, {}}, kPatience);
}

}  // namespace insight
