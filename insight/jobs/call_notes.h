#ifndef MIRN_INSIGHT_JOBS_CALL_NOTES_H
#define MIRN_INSIGHT_JOBS_CALL_NOTES_H

#include <cstdint>
#include <deque>
#include <optional>
#include <string>

#include "jobs/operation_works.h"

namespace insight {

/// A change that a client has asked for, as far as it tells who works on what. Moments are milliseconds since
/// 1970, UTC.
struct CallNote {
  std::uint64_t number = 0;  ///< Of the call, to end it by.
  std::string actor;
  std::string operation;
  std::string volumeId;  ///< Empty where the volume has no id yet.
  bool cancels = false;
  std::int64_t atMs = 0;
};

/// The calls of the last while.
class CallNotes {
 public:
  /// For this long a call may be what work comes of.
  static constexpr std::int64_t kLastingMs = 60'000;

  explicit CallNotes(OperationWorks works);

  void begin(CallNote note);
  /// What was refused has done nothing.
  void end(std::uint64_t number, bool isDone);

  /// Who has had this work begun lately; nothing where that is nobody.
  std::optional<std::string> starterOf(const std::string& kind, const std::string& volumeId,
                                       std::int64_t nowMs) const;
  bool wasCancelled(const std::string& kind, const std::string& volumeId, std::int64_t nowMs) const;

 private:
  bool fits(const CallNote& note, const std::string& kind, const std::string& volumeId,
            std::int64_t nowMs) const;

  const OperationWorks m_works;
  std::deque<CallNote> m_notes;
};

}  // namespace insight

#endif
