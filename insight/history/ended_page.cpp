#include <algorithm>
#include <limits>

#include "history/history_file.h"
#include "history/history_rows.h"
#include "history/list_cursor.h"

namespace insight {

namespace {

constexpr char kMark = 't';

/// Those that ended are told from the greatest place down.
ListPlace placeAbove(const std::string& cursor) {
  if (cursor.empty()) return {std::numeric_limits<std::int64_t>::max(), 0, {}};
  return placeAt(kMark, cursor);
}

ListPlace placeOf(const LastingRecord& record) { return {record.toMs.value_or(0), record.fromMs, record.id}; }

}  // namespace

EndedPage HistoryReader::endedPage(const std::string& table, const EndedQuery& query) {
  const ListPlace below = placeAbove(query.cursor);
  sql::Statement read(m_database, std::string("SELECT ") + rows::kLastingColumns + " FROM " + table +
                                      " WHERE to_ms IS NOT NULL AND (? = '' OR kind = ?)"
                                      " AND (to_ms, from_ms, id) < (?, ?, ?)"
                                      " ORDER BY to_ms DESC, from_ms DESC, id DESC LIMIT ?");
  read.bind(query.kind).bind(query.kind).bind(below.first).bind(below.second).bind(below.id);
  read.bind(static_cast<std::int64_t>(query.limit) + 1);
  EndedPage page;
  while (read.next()) page.items.push_back(rows::lastingAt(read));
  if (page.items.size() <= query.limit) return page;
  page.items.pop_back();
  if (!page.items.empty()) page.next = cursorAt(kMark, placeOf(page.items.back()));
  return page;
}

EndedPage HistoryReader::jobPage(const EndedQuery& query) { return endedPage("job", query); }

EndedPage HistoryReader::alarmPage(const EndedQuery& query) { return endedPage("alarm", query); }

std::vector<LastingRecord> HistoryReader::endedJobs(const std::string& kind, std::size_t limit) {
  return jobPage({kind, limit, {}}).items;
}

std::vector<LastingRecord> HistoryReader::endedAlarms(std::size_t limit) {
  return alarmPage({{}, limit, {}}).items;
}

/// However many there are of other kinds, no more than so many are looked at.
EndedLook HistoryReader::lastEnded(const std::string& table, const std::vector<std::string>& kinds,
                                   std::size_t ofLast) {
  const auto most = static_cast<std::int64_t>(ofLast);
  EndedLook look;
  sql::Statement beyond(m_database, "SELECT to_ms FROM " + table +
                                        " WHERE to_ms IS NOT NULL ORDER BY to_ms DESC LIMIT 1 OFFSET ?");
  beyond.bind(most);
  if (beyond.next()) look.fromMs = beyond.number(0) + 1;
  sql::Statement read(m_database, std::string("SELECT ") + rows::kLastingColumns + " FROM " + table +
                                      " WHERE to_ms IS NOT NULL ORDER BY to_ms DESC LIMIT ?");
  read.bind(most);
  while (read.next()) {
    const bool isWanted = std::find(kinds.begin(), kinds.end(), rows::kindOfLastingAt(read)) != kinds.end();
    if (isWanted) look.items.push_back(rows::lastingAt(read));
  }
  return look;
}

EndedLook HistoryReader::lastJobs(const std::vector<std::string>& kinds, std::size_t ofLast) {
  return lastEnded("job", kinds, ofLast);
}

EndedLook HistoryReader::lastAlarms(const std::vector<std::string>& kinds, std::size_t ofLast) {
  return lastEnded("alarm", kinds, ofLast);
}

std::optional<LastingRecord> HistoryReader::lastOf(const std::string& table, const std::string& id) {
  sql::Statement read(m_database, std::string("SELECT ") + rows::kLastingColumns + " FROM " + table +
                                      " WHERE id = ? ORDER BY from_ms DESC LIMIT 1");
  read.bind(id);
  if (!read.next()) return {};
  return rows::lastingAt(read);
}

std::optional<LastingRecord> HistoryReader::job(const std::string& id) { return lastOf("job", id); }

std::optional<LastingRecord> HistoryReader::alarm(const std::string& id) { return lastOf("alarm", id); }

}  // namespace insight
