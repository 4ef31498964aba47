#include "history/history.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "history/fresh_epoch.h"
#include "view/object_form.h"

namespace insight {

namespace {

/// Entries that are written at once.
constexpr std::size_t kLargestPart = 1000;

/// Entries after which those that are too many go.
constexpr std::size_t kBetweenPrunings = 500;

/// "20261122T010500.250Z", for names of files.
std::string compactMoment(std::int64_t atMs) {
  std::string text(timeForm(static_cast<std::uint64_t>(atMs)));
  text.erase(std::remove_if(text.begin(), text.end(), [](char c) { return c == '-' || c == ':'; }),
             text.end());
  return text;
}

LastingRecord endedUnseen(LastingRecord record, std::int64_t nowMs) {
  record.toMs = nowMs;
  record.body["state"] = "unknown";
  return record;
}

}  // namespace

History::History(Settings settings)
    : m_settings(std::move(settings)),
      m_unkeptEpoch(freshEpoch()),
      m_ownEpoch(freshEpoch()),
      m_queue(m_settings.longestQueue) {
  if (isKept()) takeTurn();
  m_isRunning = true;
  m_thread = std::thread([this] { run(); });
}

History::~History() {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopping = true;
  }
  m_changed.notify_all();
  m_thread.join();
}

void History::add(HistoryBatch batch) {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::size_t count = batch.entries.size();
    (m_queue.add(std::move(batch)) ? m_acceptedCount : m_lostCount) += count;
  }
  m_changed.notify_all();
}

bool History::addAndWait(HistoryBatch batch, Milliseconds patience) {
  std::unique_lock<std::mutex> lock(m_mutex);
  const std::size_t count = batch.entries.size();
  if (!m_queue.add(std::move(batch))) {
    m_lostCount += count;
    return false;
  }
  const std::uint64_t ticket = m_acceptedCount += count;
  m_changed.notify_all();
  const auto isWritten = [&] { return m_writtenCount >= ticket; };
  m_settled.wait_for(lock, patience, [&] { return isWritten() || !m_failure.empty() || !isKept(); });
  return isKept() && isWritten();
}

std::optional<Cause> History::cause() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_failure.empty()) return {};
  Cause cause;
  cause.kind = "history";
  cause.severity = Severity::kWarning;
  cause.object = {"service", L"", L"history"};
  cause.text = "The history cannot be written: " + m_failure + '.';
  return cause;
}

History::Load History::load() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return {m_queue.size(), m_lostCount};
}

std::string History::epoch() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_epoch;
}

void History::run() {
  std::unique_lock<std::mutex> lock(m_mutex);
  while (!m_isStopping) {
    m_changed.wait_until(lock, nextTurn(), [this] { return m_isStopping || isWorkDue(); });
    lock.unlock();
    takeTurn();
    lock.lock();
  }
  for (bool isLeft = true; isLeft; isLeft = isKept() && m_failure.empty() && !m_queue.isEmpty()) {
    m_nextTry = {};
    lock.unlock();
    takeTurn();
    lock.lock();
  }
}

bool History::isWorkDue() const {
  if (m_queue.hasUntold() || m_damage) return true;
  return isKept() && m_failure.empty() && !m_queue.isEmpty();
}

History::Clock::time_point History::nextTurn() const {
  return m_failure.empty() ? Clock::now() + m_settings.betweenPrunings : m_nextTry;
}

void History::takeTurn() {
  bool isTryDue = false;
  std::optional<std::string> damage;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    isTryDue = isKept() && Clock::now() >= m_nextTry;
    damage.swap(m_damage);
  }
  try {
    if (damage) setAside(*damage);
    if (isTryDue && !m_file) begin();
    if (isTryDue && m_file) write();
  } catch (const sql::Failure& failure) {
    if (failure.isDamage()) {
      setAside(failure.what());
    } else {
      fail(failure.what());
    }
  } catch (const std::exception& failure) {
    fail(failure.what());
  }
  tellUnwritten();
}

void History::begin() {
  auto file = std::make_unique<HistoryFile>(m_settings.path);
  Start found{file->lastingJobs(), file->lastingAlarms(), file->openCalls()};
  m_file = std::move(file);
  if (m_isRunning) {
    endUnseenOf(std::move(found));
  } else {
    m_start = std::move(found);
  }
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_epoch = m_file->epoch();
  m_failure.clear();
  m_nextTry = {};
}

/// What a file that was opened late tells of: nobody knows any more how it went on.
void History::endUnseenOf(Start found) {
  HistoryBatch ends;
  const std::lock_guard<std::mutex> lock(m_mutex);
  for (LastingRecord& job : found.jobs) {
    if (!m_queue.isJob(job)) ends.jobs.push_back(endedUnseen(std::move(job), m_settings.nowMs()));
  }
  for (LastingRecord& alarm : found.alarms) {
    if (!m_queue.isAlarm(alarm)) ends.alarms.push_back(endedUnseen(std::move(alarm), m_settings.nowMs()));
  }
  m_queue.add(std::move(ends));
}

/// Raises nothing.
void History::setAside(const std::string& reason) {
  m_file.reset();
  {
    const std::lock_guard<std::mutex> lock(m_readerMutex);
    m_reader.reset();
  }
  std::filesystem::path aside = m_settings.path;
  aside += ".bad-" + compactMoment(m_settings.nowMs());
  try {
    for (const char* const end : {"-wal", "-shm", ""}) {
      auto from = m_settings.path;
      auto to = aside;
      from += end;
      to += end;
      if (std::filesystem::exists(from)) std::filesystem::rename(from, to);
    }
    begin();
    HistoryBatch note;
    note.entries.push_back(
        ownEntry("set-aside", {{"file", aside.filename().u8string()}, {"reason", reason}}));
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_queue.repeatLasting();
    if (m_queue.add(std::move(note))) ++m_acceptedCount;
  } catch (const std::exception& failure) {
    fail(reason + "; " + failure.what());
  }
}

/// One part of what waits. What cannot be written waits on.
void History::write() {
  HistoryQueue::Part part;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    part = m_queue.take(kLargestPart);
  }
  const std::size_t ofQueue = part.batch.entries.size();
  if (part.loss.count != 0) {
    part.batch.entries.push_back(
        ownEntry("lost", {{"from", timeForm(static_cast<std::uint64_t>(part.loss.fromMs))},
                          {"to", timeForm(static_cast<std::uint64_t>(part.loss.toMs))},
                          {"count", part.loss.count}}));
  }
  try {
    if (!part.batch.isEmpty()) m_file->write(part.batch);
  } catch (...) {
    part.batch.entries.resize(ofQueue);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_queue.putBack(std::move(part));
    throw;
  }
  settle(part, ofQueue);
  pruneWhenDue(part.batch.entries.size());
}

void History::settle(const HistoryQueue::Part& part, std::size_t ofQueue) {
  for (std::size_t i = part.told; i < part.batch.entries.size(); ++i) {
    const Entry& entry = part.batch.entries[i];
    if (entry.row != 0) tell(m_file->epoch(), entry);
  }
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_queue.settle();
    m_writtenCount += ofQueue;
    m_failure.clear();
  }
  m_settled.notify_all();
}

void History::pruneWhenDue(std::size_t written) {
  m_unpruned += written;
  if (m_unpruned < kBetweenPrunings && Clock::now() < m_nextPruning) return;
  const bool mayBeMore = m_file->prune(m_settings.bounds, m_settings.nowMs());
  m_unpruned = mayBeMore ? kBetweenPrunings : 0;
  m_nextPruning = Clock::now() + m_settings.betweenPrunings;
}

/// What the file does not take, or not now, is told all the same.
void History::tellUnwritten() {
  std::vector<Entry> untold;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (isKept() && m_failure.empty()) return;
    untold = m_queue.tell();
    if (!isKept()) {
      m_queue.take(untold.size());
      m_queue.settle();
    }
  }
  for (Entry& entry : untold) {
    entry.row = ++m_unkeptRow;
    tell(m_unkeptEpoch, entry);
  }
}

void History::tell(const std::string& epoch, const Entry& entry) const {
  if (m_settings.listener) m_settings.listener(epoch, entry);
}

void History::fail(const std::string& reason) {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_failure = reason;
    m_nextTry = Clock::now() + m_settings.betweenTries;
  }
  m_settled.notify_all();
}

Entry History::ownEntry(const char* outcome, boost::json::object body) {
  Entry entry;
  entry.epoch = m_ownEpoch;
  entry.sequence = ++m_ownSequence;
  entry.atMs = m_settings.nowMs();
  entry.kind = "service";
  entry.severity = Severity::kWarning;
  entry.object = {"service", L"", L"history"};
  entry.operation = "history";
  entry.outcome = outcome;
  entry.body = std::move(body);
  return entry;
}

/// Damage that a reader meets is the writer's to mend.
template <class Read>
auto History::reading(const Read& read) -> decltype(read(std::declval<HistoryReader&>())) {
  const std::lock_guard<std::mutex> reader(m_readerMutex);
  if (!isKept()) throw sql::Failure(0, "no history is kept");
  try {
    if (!m_reader) m_reader = std::make_unique<HistoryReader>(m_settings.path);
    return read(*m_reader);
  } catch (const sql::Failure& failure) {
    m_reader.reset();
    if (failure.isDamage()) {
      {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_damage = failure.what();
      }
      m_changed.notify_all();
    }
    throw;
  }
}

HistoryPage History::page(const HistoryQuery& query) {
  return reading([&](HistoryReader& reader) { return reader.page(query); });
}

std::vector<Entry> History::entriesAfter(std::int64_t row, std::size_t limit) {
  return reading([&](HistoryReader& reader) { return reader.entriesAfter(row, limit); });
}

std::int64_t History::oldestRow() {
  return reading([](HistoryReader& reader) { return reader.oldestRow(); });
}

std::int64_t History::newestRow() {
  return reading([](HistoryReader& reader) { return reader.newestRow(); });
}

std::optional<std::int64_t> History::beginMs() {
  return reading([](HistoryReader& reader) { return reader.beginMs(); });
}

std::vector<LastingRecord> History::endedJobs(const std::string& kind, std::size_t limit) {
  return reading([&](HistoryReader& reader) { return reader.endedJobs(kind, limit); });
}

std::vector<LastingRecord> History::endedAlarms(std::size_t limit) {
  return reading([&](HistoryReader& reader) { return reader.endedAlarms(limit); });
}

EndedPage History::jobPage(const EndedQuery& query) {
  return reading([&](HistoryReader& reader) { return reader.jobPage(query); });
}

EndedPage History::alarmPage(const EndedQuery& query) {
  return reading([&](HistoryReader& reader) { return reader.alarmPage(query); });
}

EndedLook History::lastJobs(const std::vector<std::string>& kinds, std::size_t ofLast) {
  return reading([&](HistoryReader& reader) { return reader.lastJobs(kinds, ofLast); });
}

EndedLook History::lastAlarms(const std::vector<std::string>& kinds, std::size_t ofLast) {
  return reading([&](HistoryReader& reader) { return reader.lastAlarms(kinds, ofLast); });
}

std::optional<LastingRecord> History::job(const std::string& id) {
  return reading([&](HistoryReader& reader) { return reader.job(id); });
}

std::optional<LastingRecord> History::alarm(const std::string& id) {
  return reading([&](HistoryReader& reader) { return reader.alarm(id); });
}

}  // namespace insight
