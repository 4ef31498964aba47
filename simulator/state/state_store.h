#ifndef MIRN_SIMULATOR_STATE_STATE_STORE_H
#define MIRN_SIMULATOR_STATE_STATE_STORE_H

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "model/machine.h"
#include "state/journal.h"
#include "state/process_lock.h"

namespace simulator {

/// How a machine is kept.
struct StateOptions {
  LockWait lockWait;
  std::uint64_t maxJournalSize = std::uint64_t{1} << 20;  ///< from here on it is folded into the state file
};

/// Keeps a machine in a state file, with its changes since in a journal beside it (NAME.journal), for one
/// process at a time (NAME.lock). What it answered true for is on the disk; whenever the process dies,
/// the machine before or after the last change is found again. What it cannot do it says once, until it
/// can again.
class StateStore {
 public:
  /// The text of the whole machine as it is now.
  using Whole = std::function<std::string()>;

  /// Keeps nothing.
  StateStore() = default;

  /// Takes the lock of the file that `path` names behind links. A lock that cannot be made leaves a store
  /// that reads and saves nothing. Raises `ScenarioError` when another process holds it for as long as the
  /// options say.
  StateStore(const std::string& path, const StateOptions& options);

  /// The machine that is kept; nothing when there is no state file. Raises `ScenarioError` with the reason
  /// and what to do for files that cannot be read or understood, or that do not belong together; they stay as
  /// they are.
  std::optional<Machine> load();

  /// Instead of `load`: whatever is kept will be replaced.
  void disregard();

  /// The machine to begin with, which is what `load` found or a new one.
  void begin(const std::string& whole);

  /// Saves one change, a line of `writeChanges`. False when it cannot be saved: nothing of it is kept then.
  bool save(const std::string& change, const Whole& whole);

  /// Saves the whole machine in the place of everything before. False likewise.
  bool replace(const std::string& whole);

  /// Saves what happened by itself, which cannot be refused: when it cannot be saved, the next thing that can
  /// be brings the whole machine.
  void saveProgress(const std::string& change, const Whole& whole);

  /// Saves the whole machine where the file is not up to date, and lets go of everything.
  void end(const std::string& whole);

  /// Why the kept machine is behind the present one; empty when it is not.
  const std::string& whyBehind() const { return m_whyBehind; }

 private:
  bool isKeeping() const { return !m_path.empty(); }
  JournalText readJournal() const;
  void add(const std::string& change);
  void fold(const std::string& whole);
  template <class Act>
  bool attempt(const Act& act);

  std::filesystem::path m_path;
  std::filesystem::path m_journalPath;
  std::unique_ptr<ProcessLock> m_lock;
  std::string m_unlocked;  ///< why there is no lock
  std::optional<Journal> m_journal;
  std::string m_digest;  ///< of the state file
  std::uint64_t m_maxJournalSize = 0;
  std::uint64_t m_foldAt = 0;
  std::string m_whyBehind;
  std::string m_trouble;  ///< what was said of the last attempt, until one goes well
};

}  // namespace simulator

#endif
