#ifndef MIRN_INSIGHT_HISTORY_HISTORY_H
#define MIRN_INSIGHT_HISTORY_HISTORY_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "health/cause.h"
#include "history/history_file.h"
#include "history/history_queue.h"

namespace insight {

/// Keeps what happens in a file, on a thread of its own, and tells every entry on as soon as it is kept.
///
/// While the file cannot be written, entries are told on all the same, under numbers that end with that time;
/// they wait for the file, up to a bound, and what is beyond that is counted and told of in an entry of its
/// own once the file can be written again. A damaged file is set aside, and a new one is begun.
///
/// Safe from any thread, unless told otherwise.
class History {
 public:
  using Milliseconds = std::chrono::milliseconds;
  /// Takes an entry on: the epoch of its row, and the entry. Called on the history's thread, in order.
  using Listener = std::function<void(const std::string& epoch, const Entry& entry)>;

  struct Settings {
    std::filesystem::path path;  ///< Empty: nothing is kept.
    HistoryBounds bounds{};
    std::size_t longestQueue = 10'000;
    Milliseconds betweenTries{1000};
    Milliseconds betweenPrunings{60'000};
    std::function<std::int64_t()> nowMs;  ///< Milliseconds since 1970, UTC.
    Listener listener;
  };

  /// What was there at the start.
  struct Start {
    std::vector<LastingRecord> jobs;    ///< That had no end.
    std::vector<LastingRecord> alarms;  ///< Likewise.
    std::vector<Entry> calls;  ///< Changes that clients had begun, and of whose end nothing is known.
  };

  explicit History(Settings settings);
  History(const History&) = delete;
  History& operator=(const History&) = delete;
  /// Writes what waits, if that goes at the first try.
  ~History();

  /// Of the file as it was found. Empty where it could not be read.
  const Start& start() const { return m_start; }

  /// Takes it all or, where the queue is full, counts its entries as lost. Blocks nobody.
  void add(HistoryBatch batch);

  /// As `add`, and waits until it is on the disk: true then, false when it cannot be written, or not in time.
  bool addAndWait(HistoryBatch batch, Milliseconds patience);

  /// What keeps it from being kept; nothing when all is well or nothing is to be kept.
  std::optional<Cause> cause() const;

  struct Load {
    std::uint64_t queued = 0;  ///< Entries that wait to be written.
    std::uint64_t lost = 0;    ///< Of all that there were, those that were too many.
  };
  Load load() const;

  bool isKept() const { return !m_settings.path.empty(); }

  /// The epoch of the rows of the file; empty while there is none to be had.
  std::string epoch() const;

  // Readings raise `sql::Failure` where there is no file to be read, and `BadCursor`.
  HistoryPage page(const HistoryQuery& query);
  std::vector<Entry> entriesAfter(std::int64_t row, std::size_t limit);
  std::int64_t oldestRow();
  std::int64_t newestRow();               ///< Of all that there ever was.
  std::optional<std::int64_t> beginMs();  ///< Of the oldest entry.
  std::vector<LastingRecord> endedJobs(const std::string& kind, std::size_t limit);
  std::vector<LastingRecord> endedAlarms(std::size_t limit);
  EndedPage jobPage(const EndedQuery& query);
  EndedPage alarmPage(const EndedQuery& query);
  EndedLook lastJobs(const std::vector<std::string>& kinds, std::size_t ofLast);
  EndedLook lastAlarms(const std::vector<std::string>& kinds, std::size_t ofLast);
  std::optional<LastingRecord> job(const std::string& id);
  std::optional<LastingRecord> alarm(const std::string& id);

 private:
  using Clock = std::chrono::steady_clock;

  // On the thread, and in the constructor ahead of it.
  void run();
  void takeTurn();
  void begin();
  void endUnseenOf(Start found);
  void setAside(const std::string& reason);
  void write();
  void settle(const HistoryQueue::Part& part, std::size_t ofQueue);
  void pruneWhenDue(std::size_t written);
  void tell(const std::string& epoch, const Entry& entry) const;
  void tellUnwritten();
  void fail(const std::string& reason);
  Entry ownEntry(const char* outcome, boost::json::object body);

  // Under the lock.
  bool isWorkDue() const;
  Clock::time_point nextTurn() const;

  template <class Read>
  auto reading(const Read& read) -> decltype(read(std::declval<HistoryReader&>()));

  const Settings m_settings;
  const std::string m_unkeptEpoch;  ///< Of numbers that the file does not know.
  const std::string m_ownEpoch;     ///< Of the history's own entries.
  Start m_start;

  // The thread's.
  std::unique_ptr<HistoryFile> m_file;
  std::int64_t m_unkeptRow = 0;
  std::uint64_t m_ownSequence = 0;
  std::size_t m_unpruned = 0;
  Clock::time_point m_nextPruning{};
  bool m_isRunning = false;

  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  std::condition_variable m_settled;
  HistoryQueue m_queue;
  std::uint64_t m_acceptedCount = 0;
  std::uint64_t m_writtenCount = 0;
  std::uint64_t m_lostCount = 0;
  std::string m_failure;  ///< Empty while all is well.
  std::string m_epoch;
  std::optional<std::string> m_damage;  ///< That a reader has met.
  Clock::time_point m_nextTry{};
  bool m_isStopping = false;

  std::mutex m_readerMutex;
  std::unique_ptr<HistoryReader> m_reader;

  std::thread m_thread;
};

}  // namespace insight

#endif
