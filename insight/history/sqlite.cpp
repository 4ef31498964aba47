#include "history/sqlite.h"

#include <sqlite3.h>

namespace insight::sql {

bool Failure::isDamage() const {
  const int primary = m_code & 0xFF;
  return primary == SQLITE_CORRUPT || primary == SQLITE_NOTADB;
}

Database::Database(const std::string& path, Access access, int patience) {
  const int flags =
      access == Access::kRead ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  const int code = ::sqlite3_open_v2(path.c_str(), &m_database, flags | SQLITE_OPEN_NOMUTEX, nullptr);
  if (code != SQLITE_OK) {
    const Failure failure(code,
                          m_database == nullptr ? ::sqlite3_errstr(code) : ::sqlite3_errmsg(m_database));
    close();
    throw failure;
  }
  ::sqlite3_extended_result_codes(m_database, 1);
  ::sqlite3_busy_timeout(m_database, patience);
}

Database::~Database() { close(); }

void Database::close() { ::sqlite3_close_v2(m_database); }

void Database::fail(int code) const { throw Failure(code, ::sqlite3_errmsg(m_database)); }

void Database::run(const std::string& statements) {
  const int code = ::sqlite3_exec(m_database, statements.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code);
}

std::int64_t Database::number(const std::string& statement) {
  Statement asked(*this, statement);
  return asked.next() ? asked.number(0) : 0;
}

std::int64_t Database::changes() const { return ::sqlite3_changes(m_database); }

std::int64_t Database::lastRow() const { return ::sqlite3_last_insert_rowid(m_database); }

Statement::Statement(Database& database, const std::string& text) : m_database(database) {
  check(::sqlite3_prepare_v2(database.m_database, text.c_str(), -1, &m_statement, nullptr));
}

Statement::~Statement() { ::sqlite3_finalize(m_statement); }

Statement& Statement::bind(std::int64_t number) {
  check(::sqlite3_bind_int64(m_statement, ++m_bound, number));
  return *this;
}

Statement& Statement::bind(const std::string& text) {
  check(
      ::sqlite3_bind_text64(m_statement, ++m_bound, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
  return *this;
}

Statement& Statement::bind(const std::optional<std::int64_t>& number) {
  if (number) return bind(*number);
  check(::sqlite3_bind_null(m_statement, ++m_bound));
  return *this;
}

bool Statement::next() {
  const int code = ::sqlite3_step(m_statement);
  if (code == SQLITE_ROW) return true;
  if (code != SQLITE_DONE) check(code);
  return false;
}

void Statement::run() {
  while (next()) {
  }
  check(::sqlite3_reset(m_statement));
  check(::sqlite3_clear_bindings(m_statement));
  m_bound = 0;
}

std::int64_t Statement::number(int column) const { return ::sqlite3_column_int64(m_statement, column); }

std::optional<std::int64_t> Statement::maybeNumber(int column) const {
  if (::sqlite3_column_type(m_statement, column) == SQLITE_NULL) return {};
  return number(column);
}

std::string Statement::text(int column) const {
  const auto* const bytes = ::sqlite3_column_text(m_statement, column);
  if (bytes == nullptr) return {};
  return {reinterpret_cast<const char*>(bytes),
          static_cast<std::size_t>(::sqlite3_column_bytes(m_statement, column))};
}

void Statement::check(int code) const {
  if (code != SQLITE_OK) m_database.fail(code);
}

Transaction::Transaction(Database& database) : m_database(database) { database.run("BEGIN IMMEDIATE"); }

Transaction::~Transaction() {
  if (!m_isOpen) return;
  try {
    m_database.run("ROLLBACK");
  } catch (const Failure&) {  // some failures have taken everything back already
  }
}

void Transaction::commit() {
  m_database.run("COMMIT");
  m_isOpen = false;
}

}  // namespace insight::sql
