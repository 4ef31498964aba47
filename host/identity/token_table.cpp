#include "identity/token_table.h"

#include <boost/interprocess/sync/file_lock.hpp>
#include <boost/interprocess/sync/scoped_lock.hpp>
#include <mutex>
#include <stdexcept>
#include <utility>

#include "atomic_file.h"
#include "identity/private_text.h"
#include "identity/secrets.h"
#include "identity/token.h"
#include "utc_time.h"

namespace host {

namespace fs = std::filesystem;

namespace {

/// Keeps other threads and other processes from changing a table meanwhile.
class TableLock {
 public:
  explicit TableLock(const fs::path& table) : m_thread(mutex()), m_file(lockFile(table).c_str()) {
    m_file.lock();
  }
  TableLock(const TableLock&) = delete;
  TableLock& operator=(const TableLock&) = delete;
  ~TableLock() { m_file.unlock(); }

 private:
  /// The lock of a file is the process's: among its threads it holds nobody off.
  static std::mutex& mutex() {
    static std::mutex theMutex;
    return theMutex;
  }

  static fs::path lockFile(const fs::path& table) {
    fs::path file = table;
    file += ".lock";
    makePrivateFile(file, "");
    return file;
  }

  std::unique_lock<std::mutex> m_thread;
  boost::interprocess::file_lock m_file;
};

}  // namespace

const char* const kFirstToken = "first";

TokenTable::TokenTable(const std::string& tokenFile, TickClock clock)
    : m_tokenFile(tokenFile), m_path(fs::u8path(tokenFile + "s")), m_clock(std::move(clock)) {}

std::runtime_error TokenTable::failure(const std::string& reason) const {
  return std::runtime_error("token table \"" + m_path.u8string() + "\": " + reason);
}

template <class Action>
auto TokenTable::alone(Action action) const {
  try {
    makeFolderOf(m_path);
    const TableLock lock(m_path);
    return action();
  } catch (const boost::interprocess::interprocess_exception& error) {
    throw failure(error.what());
  }
}

std::optional<std::string> TokenTable::content() const {
  try {
    return readPrivateText(m_path);
  } catch (const std::runtime_error& error) {
    throw failure(error.what());
  }
}

void TokenTable::write(const TokenLines& lines) const {
  try {
    replaceFile(m_path, lines.text(), Readers::kOwner);
  } catch (const std::runtime_error& error) {
    throw failure(error.what());
  }
}

TokenEntry TokenTable::entryOf(const std::string& name, Role role, const std::string& token) const {
  return {name, role, sha256Hex(token), utcText(m_clock())};
}

TokenLines TokenTable::read() const { return TokenLines(content().value_or("")); }

std::string TokenTable::add(const std::string& name, Role role) const {
  if (!isTokenName(name)) {
    throw failure("a name is 1 to 64 letters, digits, - _ . @, a letter or digit first");
  }
  if (name == kFirstToken) throw failure("\"first\" is the token that the first start makes");
  return alone([&] {
    if (!content()) claim(sleepFor);  // else the first start would take the first token for a revoked one
    TokenLines lines = read();
    if (lines.hasLineOf(name)) throw failure("there is a token of the name \"" + name + "\"");
    const std::string token = makeToken();
    lines.add(entryOf(name, role, token));
    write(lines);
    return token;
  });
}

void TokenTable::revoke(const std::string& name) const {
  alone([&] {
    TokenLines lines = read();
    if (!lines.remove(name)) throw failure("there is no token of that name");
    write(lines);
    if (name != kFirstToken) return;
    std::error_code error;
    fs::remove(fs::u8path(m_tokenFile), error);
    if (error) {
      throw failure("the token is revoked, but its file \"" + m_tokenFile + "\" stays: " + error.message());
    }
  });
}

std::optional<std::string> TokenTable::claimFirst(const Pause& pause) const {
  return alone([&] { return claim(pause); });
}

std::optional<std::string> TokenTable::claim(const Pause& pause) const {
  const auto text = content();
  TokenLines lines(text.value_or(""));
  const bool isRevoked = text && !lines.find(kFirstToken);
  if (isRevoked || (text && !fs::exists(fs::u8path(m_tokenFile)))) return {};
  const std::string token = loadOrCreateToken(m_tokenFile, pause);
  const TokenEntry entry = entryOf(kFirstToken, Role::kAdminister, token);
  const auto before = lines.find(kFirstToken);
  if (before && before->hash == entry.hash) return token;
  lines.remove(kFirstToken);
  lines.add(entry);
  write(lines);
  return token;
}

}  // namespace host
