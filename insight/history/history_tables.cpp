#include "history/history_tables.h"

#include <array>
#include <string>

namespace insight {

namespace {

/// A step for each version: the first makes version 1 of an empty file.
constexpr std::array kSteps{
    R"(
CREATE TABLE entry(
  row INTEGER PRIMARY KEY AUTOINCREMENT, epoch TEXT NOT NULL, sequence INTEGER NOT NULL, at_ms INTEGER NOT NULL,
  kind TEXT NOT NULL, severity TEXT NOT NULL, actor TEXT NOT NULL, object_type TEXT NOT NULL,
  object_id TEXT NOT NULL, object_name TEXT NOT NULL, operation TEXT NOT NULL, outcome TEXT NOT NULL,
  body JSON NOT NULL, UNIQUE(epoch, sequence, kind));
CREATE INDEX entry_kind ON entry(kind);
CREATE INDEX entry_severity ON entry(severity);
CREATE INDEX entry_actor ON entry(actor) WHERE actor <> '';
CREATE INDEX entry_object ON entry(object_id) WHERE object_id <> '';
CREATE TABLE job(
  id TEXT NOT NULL, from_ms INTEGER NOT NULL, to_ms INTEGER, kind TEXT NOT NULL, object_id TEXT NOT NULL,
  body JSON NOT NULL, PRIMARY KEY(id, from_ms)) WITHOUT ROWID;
CREATE INDEX job_end ON job(to_ms);
CREATE TABLE alarm(
  id TEXT NOT NULL, from_ms INTEGER NOT NULL, to_ms INTEGER, kind TEXT NOT NULL, object_id TEXT NOT NULL,
  body JSON NOT NULL, PRIMARY KEY(id, from_ms)) WITHOUT ROWID;
CREATE INDEX alarm_end ON alarm(to_ms);
CREATE TABLE meta(key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
)"};

}  // namespace

void migrateHistory(sql::Database& database) {
  auto version = static_cast<std::size_t>(database.number("PRAGMA user_version"));
  if (version > kSteps.size()) {
    throw sql::Failure(0, "a later version of this program has written the file");
  }
  if (version == kSteps.size()) return;
  sql::Transaction all(database);
  for (; version < kSteps.size(); ++version) database.run(kSteps.at(version));
  database.run("PRAGMA user_version = " + std::to_string(kSteps.size()));
  all.commit();
}

}  // namespace insight
