#include <algorithm>
#include <boost/json/serialize.hpp>
#include <chrono>
#include <cstdlib>

#include "history/history_file.h"
#include "history/history_rows.h"

namespace insight {

namespace {

using Clock = std::chrono::steady_clock;

/// Rows that are looked at without a look at the clock.
constexpr std::int64_t kStretch = 2000;
constexpr std::chrono::milliseconds kLongestLook{15};

constexpr char kCursorMark = 'e';

std::string cursorBelow(std::int64_t row) { return kCursorMark + std::to_string(row); }

/// The row that everything wanted is below.
std::int64_t rowOf(const std::string& cursor) {
  constexpr std::size_t kMostDigits = 18;
  const bool isOurs =
      cursor.size() > 1 && cursor.size() <= 1 + kMostDigits && cursor.front() == kCursorMark &&
      std::all_of(cursor.begin() + 1, cursor.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (!isOurs) throw BadCursor();
  return std::strtoll(cursor.c_str() + 1, nullptr, 10);
}

/// A text as it stands in details, for LIKE with `\`.
std::string patternOf(const std::string& text) {
  const std::string quoted = boost::json::serialize(boost::json::string(text));
  std::string pattern = "%";
  for (const char c : quoted.substr(1, quoted.size() - 2)) {
    if (c == '%' || c == '_' || c == '\\') pattern += '\\';
    pattern += c;
  }
  return pattern + '%';
}

/// The conditions of a query as SQL, and their values in order.
class Conditions {
 public:
  explicit Conditions(const HistoryQuery& query) : m_query(query) {
    add(query.fromMs.has_value(), " AND at_ms >= ?");
    add(query.toMs.has_value(), " AND at_ms < ?");
    add(!query.kind.empty(), " AND kind = ?");
    add(query.severity.has_value(), " AND severity = ?");
    add(!query.objectType.empty(), " AND object_type = ?");
    add(!query.objectId.empty(), " AND object_id = ? AND object_id <> ''");
    add(!query.actor.empty(), " AND actor = ? AND actor <> ''");
    add(!query.withAudit, " AND kind <> 'audit'");
    add(!query.text.empty(),
        " AND (body LIKE ? ESCAPE '\\' OR object_name LIKE ? ESCAPE '\\' OR operation LIKE ? ESCAPE '\\' OR "
        "outcome LIKE ? ESCAPE '\\')");
  }

  const std::string& sql() const { return m_sql; }

  void bind(sql::Statement& statement) const {
    if (m_query.fromMs) statement.bind(*m_query.fromMs);
    if (m_query.toMs) statement.bind(*m_query.toMs);
    if (!m_query.kind.empty()) statement.bind(m_query.kind);
    if (m_query.severity) statement.bind(std::string(severityWord(*m_query.severity)));
    if (!m_query.objectType.empty()) statement.bind(m_query.objectType);
    if (!m_query.objectId.empty()) statement.bind(m_query.objectId);
    if (!m_query.actor.empty()) statement.bind(m_query.actor);
    if (m_query.text.empty()) return;
    const std::string pattern = patternOf(m_query.text);
    statement.bind(pattern).bind(pattern).bind(pattern).bind(pattern);
  }

 private:
  void add(bool isWanted, const char* condition) {
    if (isWanted) m_sql += condition;
  }

  const HistoryQuery& m_query;
  std::string m_sql;
};

}  // namespace

/// Goes down in stretches, so that no question holds anybody up for longer than one of them.
HistoryPage HistoryReader::page(const HistoryQuery& query) {
  const std::size_t limit = std::clamp<std::size_t>(query.limit, 1, kLargestPage);
  const Conditions conditions(query);
  const auto until = Clock::now() + kLongestLook;
  const std::int64_t oldest = oldestRow();
  std::int64_t below = m_database.number("SELECT max(row) FROM entry") + 1;
  if (!query.cursor.empty()) below = std::min(below, rowOf(query.cursor));

  HistoryPage page;
  sql::Statement read(m_database, std::string("SELECT ") + rows::kEntryColumns +
                                      " FROM entry WHERE row < ? AND row >= ?" + conditions.sql() +
                                      " ORDER BY row DESC LIMIT ?");
  while (below > oldest && page.items.size() < limit) {
    const std::int64_t from = below - kStretch;
    read.bind(below).bind(from);
    conditions.bind(read);
    read.bind(static_cast<std::int64_t>(limit - page.items.size()));
    while (read.next()) page.items.push_back(rows::entryAt(read));
    read.run();
    below = page.items.size() == limit ? page.items.back().row : from;
    if (Clock::now() >= until) break;
  }
  if (below > oldest) page.next = cursorBelow(below);
  return page;
}

}  // namespace insight
