#include "history/history_rows.h"

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "text.h"

namespace insight::rows {

namespace {

/// What is damaged in a way that the file itself does not show is told, and costs nothing else.
boost::json::object objectIn(const std::string& text) {
  boost::system::error_code error;
  boost::json::value value = boost::json::parse(text, error);
  if (error || !value.is_object()) return {{"damaged", true}};
  return std::move(value.get_object());
}

std::wstring wideOr(const std::string& text) {
  try {
    return utf8ToWide(text);
  } catch (const std::range_error&) {
    return L"?";
  }
}

}  // namespace

Entry entryAt(const sql::Statement& statement) {
  Entry entry;
  entry.row = statement.number(0);
  entry.epoch = statement.text(1);
  entry.sequence = static_cast<std::uint64_t>(statement.number(2));
  entry.atMs = statement.number(3);
  entry.kind = statement.text(4);
  entry.severity = severityOf(statement.text(5)).value_or(Severity::kUnknown);
  entry.actor = statement.text(6);
  entry.object = {statement.text(7), wideOr(statement.text(8)), wideOr(statement.text(9))};
  entry.operation = statement.text(10);
  entry.outcome = statement.text(11);
  entry.body = objectIn(statement.text(12));
  return entry;
}

void bindEntry(sql::Statement& statement, const Entry& entry) {
  statement.bind(entry.epoch)
      .bind(static_cast<std::int64_t>(entry.sequence))
      .bind(entry.atMs)
      .bind(entry.kind)
      .bind(std::string(severityWord(entry.severity)))
      .bind(entry.actor)
      .bind(entry.object.type)
      .bind(wideToUtf8(entry.object.id))
      .bind(wideToUtf8(entry.object.name))
      .bind(entry.operation)
      .bind(entry.outcome)
      .bind(boost::json::serialize(entry.body));
}

std::string kindOfLastingAt(const sql::Statement& statement) { return statement.text(3); }

LastingRecord lastingAt(const sql::Statement& statement) {
  LastingRecord record;
  record.id = statement.text(0);
  record.fromMs = statement.number(1);
  record.toMs = statement.maybeNumber(2);
  record.kind = kindOfLastingAt(statement);
  record.objectId = statement.text(4);
  record.body = objectIn(statement.text(5));
  return record;
}

void bindLasting(sql::Statement& statement, const LastingRecord& record) {
  statement.bind(record.id)
      .bind(record.fromMs)
      .bind(record.toMs)
      .bind(record.kind)
      .bind(record.objectId)
      .bind(boost::json::serialize(record.body));
}

}  // namespace insight::rows
