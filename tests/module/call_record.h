#ifndef MIRN_TESTS_MODULE_CALL_RECORD_H
#define MIRN_TESTS_MODULE_CALL_RECORD_H

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "scripted_library/scripted_library.h"

/// What makes the scripted library be called, and the calls that it made, as a text that is the same whenever
/// and wherever the calls are. One step a block:
///
///     ## VolumeName
///     PUT mirn/volumes/5051/name {name: "Fotos"}
///     = {name: "Fotos", volumeId: "5051"}
///       VexVolumeRename(51, "Fotos")
///       snapshot 1
///
/// A record that the library is to fill is shown as it came, `out{88 x 00}` when all of it is zero. The
/// library's read session reads "session" where it is the one opened last. The calls between an opening and
/// the closing after it are numbered and shown once; the same calls again are no more than their number.
/// Calls of another thread than the step's are marked as the event thread's.
class CallRecord {
 public:
  explicit CallRecord(ScriptedLibrary& library) : m_library(library) {}

  /// What stands between steps.
  void write(const std::string& line) { m_text += line + '\n'; }

  /// Does something, and writes what it says of itself and the calls that it made, but for those of the
  /// operation `leftOut`. Outside the library no other thread may be on its way to it.
  void step(const std::string& heading, const std::function<std::string()>& act,
            const std::string& leftOut = {});

  const std::string& text() const { return m_text; }

 private:
  struct Line {
    std::string mark;  ///< Of the thread.
    std::string text;
    std::string operation;
  };
  using Lines = std::vector<Line>;

  Line lineOf(const ScriptedCall& call);
  std::string argumentText(const ScriptedCall& call, std::size_t place) const;
  void writeCalls(const ScriptedCalls& calls);
  void writeSnapshot(Lines::const_iterator first, Lines::const_iterator end);

  ScriptedLibrary& m_library;
  VEX_HANDLE m_session = 0;  ///< Opened last.
  std::map<std::string, std::size_t> m_snapshots;
  std::string m_text;
};

#endif
