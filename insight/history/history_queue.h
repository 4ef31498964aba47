#ifndef MIRN_INSIGHT_HISTORY_HISTORY_QUEUE_H
#define MIRN_INSIGHT_HISTORY_HISTORY_QUEUE_H

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "history/history_file.h"

namespace insight {

/// What waits to be written, in order. Entries are told on as they are written, or before that. One thread at
/// a time.
class HistoryQueue {
 public:
  /// Entries that were too many, by when they happened.
  struct Loss {
    std::int64_t count = 0;
    std::int64_t fromMs = 0;
    std::int64_t toMs = 0;
  };

  /// What is being written.
  struct Part {
    HistoryBatch batch;
    std::size_t told = 0;  ///< Of its entries, the first so many.
    Loss loss;             ///< Where nothing of what came before it waits any more.
  };

  explicit HistoryQueue(std::size_t most) : m_most(most) {}

  /// False when its entries are too many: they are counted as lost, and what lasts is taken all the same.
  bool add(HistoryBatch batch);

  bool isEmpty() const {
    return m_entries.empty() && m_jobs.empty() && m_alarms.empty() && m_loss.count == 0;
  }
  /// Of entries that are not written.
  std::size_t size() const { return m_entries.size() + m_taken; }
  bool hasUntold() const { return m_told < m_entries.size(); }

  /// Takes out what lasts, and at most `limit` entries, which take up room until they are written.
  Part take(std::size_t limit);
  /// Undoes the last `take`.
  void putBack(Part part);
  /// What was taken last is written.
  void settle() { m_taken = 0; }

  /// The entries that were not told yet, which now count as told.
  std::vector<Entry> tell();

  /// Has everything that lasts written again, for a file that is new.
  void repeatLasting();
  /// Whether it was told of as lasting, and of no end.
  bool isJob(const LastingRecord& job) const { return m_lastingJobs.count(keyOf(job)) != 0; }
  bool isAlarm(const LastingRecord& alarm) const { return m_lastingAlarms.count(keyOf(alarm)) != 0; }

 private:
  using Key = std::pair<std::string, std::int64_t>;
  using Records = std::map<Key, LastingRecord>;

  static Key keyOf(const LastingRecord& record) { return {record.id, record.fromMs}; }
  static void take(std::vector<LastingRecord>& records, Records& waiting, Records& lasting);
  static std::vector<LastingRecord> valuesOf(Records& records);
  void count(const Loss& loss);

  const std::size_t m_most;
  std::deque<Entry> m_entries;
  std::size_t m_taken = 0;  ///< Entries that are neither here nor written.
  std::size_t m_told = 0;   ///< Of the entries, the first so many.
  Records m_jobs;
  Records m_alarms;
  Records m_lastingJobs;  ///< As they stand, written or not.
  Records m_lastingAlarms;
  Loss m_loss;
};

}  // namespace insight

#endif
