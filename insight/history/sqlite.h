#ifndef MIRN_INSIGHT_HISTORY_SQLITE_H
#define MIRN_INSIGHT_HISTORY_SQLITE_H

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

/// What of SQLite's interface is needed, with ends that nobody forgets. Texts are UTF-8. One thread at a time
/// uses a database and what belongs to it. What fails raises `Failure`.
namespace insight::sql {

class Failure : public std::runtime_error {
 public:
  Failure(int code, const std::string& words) : std::runtime_error(words), m_code(code) {}

  /// The file is damaged, or none of ours.
  bool isDamage() const;

 private:
  int m_code;
};

class Database {
 public:
  enum class Access { kReadAndMake, kRead };

  /// Waits for others' locks for `patience` milliseconds, at each operation.
  Database(const std::string& path, Access access, int patience);
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  /// Runs statements one after the other, whatever they answer.
  void run(const std::string& statements);
  /// The first number of what a statement answers.
  std::int64_t number(const std::string& statement);

  /// How many rows the last change of rows changed.
  std::int64_t changes() const;
  /// The number of the last row that was put in.
  std::int64_t lastRow() const;

 private:
  friend class Statement;
  [[noreturn]] void fail(int code) const;
  void close();

  sqlite3* m_database = nullptr;
};

/// Goes before its database does.
class Statement {
 public:
  Statement(Database& database, const std::string& text);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  /// The next of its parameters, in their order.
  Statement& bind(std::int64_t number);
  Statement& bind(const std::string& text);
  Statement& bind(const std::optional<std::int64_t>& number);

  /// True when there is a row to be read.
  bool next();
  /// To the end; then as new, without parameters.
  void run();

  // Columns count from 0.
  std::int64_t number(int column) const;
  std::optional<std::int64_t> maybeNumber(int column) const;
  std::string text(int column) const;  ///< Empty for null.

 private:
  void check(int code) const;

  Database& m_database;
  sqlite3_stmt* m_statement = nullptr;
  int m_bound = 0;
};

/// All of what is done while it lives, or nothing of it.
class Transaction {
 public:
  explicit Transaction(Database& database);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  /// Takes everything back, unless it was committed.
  ~Transaction();

  void commit();

 private:
  Database& m_database;
  bool m_isOpen = true;
};

}  // namespace insight::sql

#endif
