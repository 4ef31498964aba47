#ifndef MIRN_INSIGHT_HISTORY_HISTORY_FILE_H
#define MIRN_INSIGHT_HISTORY_HISTORY_FILE_H

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "history/entry.h"
#include "history/history_query.h"
#include "history/list_cursor.h"
#include "history/sqlite.h"

namespace insight {

/// What goes into the history at once: all of it or nothing.
struct HistoryBatch {
  std::vector<Entry> entries;
  std::vector<LastingRecord> jobs;
  std::vector<LastingRecord> alarms;

  bool isEmpty() const { return entries.empty() && jobs.empty() && alarms.empty(); }
};

/// How much is kept: whichever is reached first.
struct HistoryBounds {
  std::int64_t entries = 1'000'000;
  std::int64_t milliseconds = std::int64_t{400} * 24 * 60 * 60 * 1000;
};

/// The history's file, open. One thread at a time; what fails raises `sql::Failure` and changes nothing.
class HistoryFile {
 public:
  /// Makes the file where there is none.
  explicit HistoryFile(const std::filesystem::path& path);

  /// Random, made with the file: rows of different files are different things.
  const std::string& epoch() const { return m_epoch; }
  std::int64_t oldestRow();  ///< 0 when there is none.
  std::int64_t newestRow();  ///< Of all that there ever was.

  /// Gives each entry its row. One whose epoch, sequence and kind are there already is left out, with row 0.
  void write(HistoryBatch& batch);

  /// Removes some of what is too much at `nowMs`; true when there may be more. What lasts stays.
  bool prune(const HistoryBounds& bounds, std::int64_t nowMs);

  std::vector<LastingRecord> lastingJobs() { return lasting("job"); }
  std::vector<LastingRecord> lastingAlarms() { return lasting("alarm"); }

  /// Audit entries of changes that were begun, and of whose end nothing is known.
  std::vector<Entry> openCalls();

 private:
  std::vector<LastingRecord> lasting(const std::string& table);
  void save(const std::string& table, const std::vector<LastingRecord>& records);
  void add(std::vector<Entry>& entries);
  void demandDurability(const HistoryBatch& batch);
  bool pruneEntries(const HistoryBounds& bounds, std::int64_t oldestMs);
  std::int64_t oldestKeptMs();
  void pruneEnded(std::int64_t oldestMs);

  sql::Database m_database;
  std::string m_epoch;
  bool m_isDurable = true;
};

/// The same file for reading, beside the one that writes. One thread at a time.
class HistoryReader {
 public:
  explicit HistoryReader(const std::filesystem::path& path);

  HistoryPage page(const HistoryQuery& query);
  /// Entries above a row, oldest first.
  std::vector<Entry> entriesAfter(std::int64_t row, std::size_t limit);
  std::int64_t oldestRow();
  std::int64_t newestRow();
  /// The moment of the oldest entry; nothing when there is none.
  std::optional<std::int64_t> beginMs();
  /// The last that came to their end, newest first; of one kind where that is not empty.
  std::vector<LastingRecord> endedJobs(const std::string& kind, std::size_t limit);
  std::vector<LastingRecord> endedAlarms(std::size_t limit);
  EndedPage jobPage(const EndedQuery& query);
  EndedPage alarmPage(const EndedQuery& query);
  /// Those of some kinds among so many that ended last.
  EndedLook lastJobs(const std::vector<std::string>& kinds, std::size_t ofLast);
  EndedLook lastAlarms(const std::vector<std::string>& kinds, std::size_t ofLast);
  /// The last one with this id, ended or not; nothing where there is none.
  std::optional<LastingRecord> job(const std::string& id);
  std::optional<LastingRecord> alarm(const std::string& id);

 private:
  EndedPage endedPage(const std::string& table, const EndedQuery& query);
  EndedLook lastEnded(const std::string& table, const std::vector<std::string>& kinds, std::size_t ofLast);
  std::optional<LastingRecord> lastOf(const std::string& table, const std::string& id);

  sql::Database m_database;
};

}  // namespace insight

#endif
