#include "history/history_queue.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace insight {

bool HistoryQueue::add(HistoryBatch batch) {
  take(batch.jobs, m_jobs, m_lastingJobs);
  take(batch.alarms, m_alarms, m_lastingAlarms);
  if (m_entries.size() + m_taken + batch.entries.size() > m_most) {
    for (const Entry& entry : batch.entries) count({1, entry.atMs, entry.atMs});
    return false;
  }
  std::move(batch.entries.begin(), batch.entries.end(), std::back_inserter(m_entries));
  return true;
}

void HistoryQueue::take(std::vector<LastingRecord>& records, Records& waiting, Records& lasting) {
  for (LastingRecord& record : records) {
    if (record.toMs) {
      lasting.erase(keyOf(record));
    } else {
      lasting[keyOf(record)] = record;
    }
    waiting[keyOf(record)] = std::move(record);
  }
}

void HistoryQueue::count(const Loss& loss) {
  if (loss.count == 0) return;
  m_loss.fromMs = m_loss.count == 0 ? loss.fromMs : std::min(m_loss.fromMs, loss.fromMs);
  m_loss.toMs = m_loss.count == 0 ? loss.toMs : std::max(m_loss.toMs, loss.toMs);
  m_loss.count += loss.count;
}

HistoryQueue::Part HistoryQueue::take(std::size_t limit) {
  Part part;
  const std::size_t count = std::min(limit, m_entries.size());
  const auto end = m_entries.begin() + static_cast<std::ptrdiff_t>(count);
  std::move(m_entries.begin(), end, std::back_inserter(part.batch.entries));
  m_entries.erase(m_entries.begin(), end);
  m_taken = count;
  part.told = std::min(m_told, count);
  m_told -= part.told;
  if (m_entries.empty()) part.loss = std::exchange(m_loss, {});
  part.batch.jobs = valuesOf(m_jobs);
  part.batch.alarms = valuesOf(m_alarms);
  return part;
}

std::vector<LastingRecord> HistoryQueue::valuesOf(Records& records) {
  std::vector<LastingRecord> values;
  for (auto& [key, record] : records) values.push_back(std::move(record));
  records.clear();
  return values;
}

void HistoryQueue::putBack(Part part) {
  std::move(part.batch.entries.rbegin(), part.batch.entries.rend(), std::front_inserter(m_entries));
  m_taken = 0;
  m_told += part.told;
  count(part.loss);
  // What has come meanwhile is newer.
  for (LastingRecord& record : part.batch.jobs) m_jobs.emplace(keyOf(record), std::move(record));
  for (LastingRecord& record : part.batch.alarms) m_alarms.emplace(keyOf(record), std::move(record));
}

std::vector<Entry> HistoryQueue::tell() {
  const auto untold = m_entries.begin() + static_cast<std::ptrdiff_t>(m_told);
  m_told = m_entries.size();
  return {untold, m_entries.end()};
}

void HistoryQueue::repeatLasting() {
  for (const auto& [key, record] : m_lastingJobs) m_jobs.emplace(key, record);
  for (const auto& [key, record] : m_lastingAlarms) m_alarms.emplace(key, record);
}

}  // namespace insight
