#include "state/state_store.h"

#include <cerrno>
#include <cstdio>
#include <stdexcept>

#include "atomic_file.h"
#include "links.h"
#include "narrow_path.h"
#include "say.h"
#include "scenario/changes.h"
#include "scenario/scenario.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

constexpr char kBeginAnew[] = ", or move it away to begin with a new machine";

fs::path beside(const fs::path& path, const char* suffix) {
  fs::path result = path;
  result += suffix;
  return result;
}

[[noreturn]] void refuse(const fs::path& path, const std::string& text) {
  throw ScenarioError(path.string() + ": " + text);
}

std::string reasonOf(int error) { return std::generic_category().message(error); }

/// The content of the file; nothing when there is none.
std::optional<std::string> readFile(const fs::path& path) {
  const auto close = [](std::FILE* file) { std::fclose(file); };
  errno = 0;
  const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path.string().c_str(), "rb"), close);
  if (!file && errno == ENOENT) return {};
  if (!file) refuse(path, "cannot be opened: " + reasonOf(errno) + "; make it readable" + kBeginAnew);
  std::string content;
  char part[1 << 16];
  while (const std::size_t size = std::fread(part, 1, sizeof part, file.get())) content.append(part, size);
  if (std::ferror(file.get()) != 0) {
    refuse(path, "cannot be read: " + reasonOf(errno) + "; make it readable" + kBeginAnew);
  }
  return content;
}

fs::path resolve(const std::string& path) {
  try {
    return behindLinks(narrowPath(path));
  } catch (const std::runtime_error& error) {
    refuse(path, std::string("cannot be opened: ") + error.what() + "; mend the link" + kBeginAnew);
  }
}

}  // namespace

StateStore::StateStore(const std::string& path, const StateOptions& options)
    : m_path(resolve(path)),
      m_journalPath(beside(m_path, ".journal")),
      m_maxJournalSize(options.maxJournalSize),
      m_foldAt(options.maxJournalSize) {
  const fs::path lockPath = beside(m_path, ".lock");
  try {
    m_lock = waitForLock(lockPath, options.lockWait);
  } catch (const std::runtime_error& error) {
    m_unlocked = lockPath.string() + ": cannot be locked: " + error.what();
    return;
  }
  if (m_lock) return;
  const std::string holder = holderOf(lockPath);
  refuse(m_path, "is in use by " + (holder.empty() ? "another process" : "process " + holder) +
                     "; stop that one, or name another file with VEXL2_STATE");
}

JournalText StateStore::readJournal() const {
  JournalText journal(readFile(m_journalPath).value_or(""));
  if (journal.isTorn()) {
    vexl2::say(m_journalPath.string() + ": its last line is torn and left out: it was never answered");
  }
  return journal;
}

std::optional<Machine> StateStore::load() {
  if (!isKeeping()) return {};
  const auto state = readFile(m_path);
  const JournalText journal = readJournal();
  m_journal.emplace(m_journalPath, journal.wholeSize());
  if (!state) {
    if (!journal.holdsChanges()) return {};
    refuse(m_journalPath,
           "holds changes of a state file that is not there; put that one back, or move the journal away to "
           "begin with a new machine");
  }
  m_digest = digestOf(*state);
  const auto changes = journal.changesOf(m_digest);
  if (!changes && journal.holdsChanges()) {
    refuse(m_journalPath,
           "belongs to another content of " + m_path.string() +
               "; put that content back, or move the journal away to go on without the changes in it");
  }
  std::vector<std::string_view> lines;
  std::vector<std::string> names;
  for (const std::size_t number : changes.value_or(std::vector<std::size_t>())) {
    lines.push_back(journal.line(number));
    names.push_back(m_journalPath.string() + ", line " + std::to_string(number));
  }
  try {
    return readScenarioWithChanges(*state, lines, names);
  } catch (const ScenarioError& error) {
    refuse(m_path, std::string(error.what()) + "; mend it" + kBeginAnew);
  }
}

void StateStore::disregard() {
  if (!isKeeping()) return;
  try {
    m_journal.emplace(m_journalPath, readJournal().wholeSize());
  } catch (const ScenarioError& error) {
    m_unlocked = error.what();
  }
}

void StateStore::begin(const std::string& whole) {
  const bool isUpToDate = isKeeping() && m_journal && m_journal->size() == 0 && m_digest == digestOf(whole);
  if (!isKeeping() || isUpToDate) return;
  if (!attempt([&] { fold(whole); })) m_whyBehind = m_trouble;
}

bool StateStore::save(const std::string& change, const Whole& whole) {
  if (!isKeeping() || change.empty()) return true;
  if (!m_whyBehind.empty()) return replace(whole());
  if (m_journal && m_journal->size() + change.size() > m_foldAt) {
    if (replace(whole())) return true;
    m_foldAt =
        m_journal->size() + m_maxJournalSize;  // it may still grow; nobody wants to hear this each time
  }
  return attempt([&] { add(change); });
}

bool StateStore::replace(const std::string& whole) {
  if (!isKeeping()) return true;
  return attempt([&] { fold(whole); });
}

void StateStore::saveProgress(const std::string& change, const Whole& whole) {
  if (!save(change, whole)) m_whyBehind = m_trouble;
}

void StateStore::end(const std::string& whole) {
  begin(whole);
  if (m_journal && m_lock) m_journal->remove();
  *this = StateStore();
}

void StateStore::add(const std::string& change) {
  try {
    m_journal->add(change, m_digest);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(m_journalPath.string() + ": cannot be written: " + error.what());
  }
}

/// The journal is told first: a process that dies in between leaves a journal that belongs to the old file
/// and to the new one.
void StateStore::fold(const std::string& whole) {
  const std::string digest = digestOf(whole);
  try {
    m_journal->announce(digest);
    replaceFile(m_path, whole, Readers::kOwner);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(m_path.string() + ": cannot be written: " + error.what());
  }
  m_digest = digest;
  m_foldAt = m_maxJournalSize;
  m_whyBehind.clear();
  m_journal->clear();
}

template <class Act>
bool StateStore::attempt(const Act& act) {
  std::string trouble = m_unlocked;
  if (trouble.empty()) {
    try {
      act();
      m_trouble.clear();
      return true;
    } catch (const std::runtime_error& error) {
      trouble = error.what();
    }
  }
  if (m_trouble.empty())
    vexl2::say(trouble + "; until that is mended, no change can be kept, and all are refused");
  m_trouble = trouble;
  return false;
}

}  // namespace simulator
