#include "history/history_file.h"

#include <algorithm>

#include "atomic_file.h"
#include "history/fresh_epoch.h"
#include "history/history_rows.h"
#include "history/history_tables.h"

namespace insight {

namespace {

constexpr int kPatienceMs = 250;

/// How many rows one step of pruning looks at.
constexpr std::int64_t kPruned = 1000;

std::string utf8Of(const std::filesystem::path& path) { return path.u8string(); }

/// The library gives a new file to everybody; who did what is nobody else's business.
std::string madePrivately(const std::filesystem::path& path) {
  try {
    makePrivateFile(path, {});
  } catch (const std::runtime_error& failure) {
    throw sql::Failure(0, failure.what());
  }
  return utf8Of(path);
}

/// Made with the file.
std::string epochIn(sql::Database& database) {
  sql::Statement make(database, "INSERT OR IGNORE INTO meta(key, value) VALUES('epoch', ?)");
  make.bind(freshEpoch()).run();
  sql::Statement read(database, "SELECT value FROM meta WHERE key = 'epoch'");
  return read.next() ? read.text(0) : std::string();
}

std::int64_t oldestRowIn(sql::Database& database) { return database.number("SELECT min(row) FROM entry"); }
std::int64_t newestRowIn(sql::Database& database) {
  return database.number("SELECT seq FROM sqlite_sequence WHERE name = 'entry'");
}

}  // namespace

HistoryFile::HistoryFile(const std::filesystem::path& path)
    : m_database(madePrivately(path), sql::Database::Access::kReadAndMake, kPatienceMs) {
  m_database.run("PRAGMA journal_mode = WAL; PRAGMA synchronous = FULL; PRAGMA cell_size_check = ON;");
  migrateHistory(m_database);
  m_epoch = epochIn(m_database);
}

std::int64_t HistoryFile::oldestRow() { return oldestRowIn(m_database); }

std::int64_t HistoryFile::newestRow() { return newestRowIn(m_database); }

void HistoryFile::write(HistoryBatch& batch) {
  demandDurability(batch);
  sql::Transaction all(m_database);
  add(batch.entries);
  save("job", batch.jobs);
  save("alarm", batch.alarms);
  all.commit();
}

/// What clients did and what they wait for outlives a loss of power; the rest may lose its last moments.
void HistoryFile::demandDurability(const HistoryBatch& batch) {
  const bool wanted = std::any_of(batch.entries.begin(), batch.entries.end(), [](const Entry& entry) {
    return entry.kind == "audit" || entry.kind == "job";
  });
  if (wanted == m_isDurable) return;
  m_database.run(wanted ? "PRAGMA synchronous = FULL" : "PRAGMA synchronous = NORMAL");
  m_isDurable = wanted;
}

void HistoryFile::add(std::vector<Entry>& entries) {
  if (entries.empty()) return;
  sql::Statement insert(
      m_database,
      "INSERT OR IGNORE INTO entry(epoch, sequence, at_ms, kind, severity, actor, object_type, "
      "object_id, object_name, operation, outcome, body) VALUES(?,?,?,?,?,?,?,?,?,?,?,?)");
  for (Entry& entry : entries) {
    rows::bindEntry(insert, entry);
    insert.run();
    entry.row = m_database.changes() == 0 ? 0 : m_database.lastRow();
  }
}

void HistoryFile::save(const std::string& table, const std::vector<LastingRecord>& records) {
  if (records.empty()) return;
  sql::Statement insert(
      m_database, "INSERT OR REPLACE INTO " + table + '(' + rows::kLastingColumns + ") VALUES(?,?,?,?,?,?)");
  for (const LastingRecord& record : records) {
    rows::bindLasting(insert, record);
    insert.run();
  }
}

bool HistoryFile::prune(const HistoryBounds& bounds, std::int64_t nowMs) {
  const std::int64_t oldestMs = nowMs - bounds.milliseconds;
  sql::Transaction all(m_database);
  const bool mayBeMore = pruneEntries(bounds, oldestMs);
  pruneEnded(mayBeMore ? oldestMs : std::max(oldestMs, oldestKeptMs()));
  all.commit();
  return mayBeMore;
}

/// The moment before which nothing is kept any more; 0 while everything is.
std::int64_t HistoryFile::oldestKeptMs() {
  return m_database.number("SELECT at_ms FROM entry WHERE row = (SELECT min(row) FROM entry) AND row > 1");
}

/// From the oldest on, so that what is left has no hole.
bool HistoryFile::pruneEntries(const HistoryBounds& bounds, std::int64_t oldestMs) {
  const std::int64_t oldest = oldestRow();
  const std::int64_t lastOfStep = oldest + kPruned - 1;
  const std::int64_t tooMany = newestRow() - bounds.entries;
  sql::Statement firstKept(
      m_database, "SELECT row FROM entry WHERE row <= ? AND at_ms >= ? AND row > ? ORDER BY row LIMIT 1");
  firstKept.bind(lastOfStep).bind(oldestMs).bind(tooMany);
  const std::int64_t last = firstKept.next() ? firstKept.number(0) - 1 : lastOfStep;
  sql::Statement remove(m_database, "DELETE FROM entry WHERE row <= ?");
  remove.bind(last).run();
  return m_database.changes() > 0 && last == lastOfStep;
}

void HistoryFile::pruneEnded(std::int64_t oldestMs) {
  for (const char* const statement :
       {"DELETE FROM job WHERE to_ms < ?", "DELETE FROM alarm WHERE to_ms < ?"}) {
    sql::Statement remove(m_database, statement);
    remove.bind(oldestMs).run();
  }
}

std::vector<LastingRecord> HistoryFile::lasting(const std::string& table) {
  sql::Statement read(m_database, std::string("SELECT ") + rows::kLastingColumns + " FROM " + table +
                                      " WHERE to_ms IS NULL ORDER BY from_ms, id");
  std::vector<LastingRecord> records;
  while (read.next()) records.push_back(rows::lastingAt(read));
  return records;
}

std::vector<Entry> HistoryFile::openCalls() {
  sql::Statement read(m_database,
                      std::string("SELECT ") + rows::kEntryColumns +
                          " FROM entry AS begun WHERE kind = 'audit' AND outcome = 'begun' AND NOT EXISTS "
                          "(SELECT 1 FROM entry AS told WHERE told.epoch = begun.epoch AND "
                          "told.sequence = begun.sequence + 1 AND told.kind = 'audit') ORDER BY row");
  std::vector<Entry> calls;
  while (read.next()) calls.push_back(rows::entryAt(read));
  return calls;
}

HistoryReader::HistoryReader(const std::filesystem::path& path)
    : m_database(utf8Of(path), sql::Database::Access::kRead, kPatienceMs) {
  m_database.run("PRAGMA cell_size_check = ON");
}

std::int64_t HistoryReader::oldestRow() { return oldestRowIn(m_database); }
std::int64_t HistoryReader::newestRow() { return newestRowIn(m_database); }

std::optional<std::int64_t> HistoryReader::beginMs() {
  sql::Statement read(m_database, "SELECT at_ms FROM entry ORDER BY row LIMIT 1");
  if (!read.next()) return {};
  return read.number(0);
}

std::vector<Entry> HistoryReader::entriesAfter(std::int64_t row, std::size_t limit) {
  sql::Statement read(m_database, std::string("SELECT ") + rows::kEntryColumns +
                                      " FROM entry WHERE row > ? ORDER BY row LIMIT ?");
  read.bind(row).bind(static_cast<std::int64_t>(limit));
  std::vector<Entry> entries;
  while (read.next()) entries.push_back(rows::entryAt(read));
  return entries;
}

}  // namespace insight
