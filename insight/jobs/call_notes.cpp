#include "jobs/call_notes.h"

#include <algorithm>
#include <utility>

namespace insight {

CallNotes::CallNotes(OperationWorks works) : m_works(std::move(works)) {}

bool CallNotes::fits(const CallNote& note, const std::string& kind, const std::string& volumeId,
                     std::int64_t nowMs) const {
  return m_works.count({note.operation, kind}) != 0 && (note.volumeId.empty() || note.volumeId == volumeId) &&
         nowMs - note.atMs <= kLastingMs;
}

void CallNotes::begin(CallNote note) {
  while (!m_notes.empty() && note.atMs - m_notes.front().atMs > kLastingMs) m_notes.pop_front();
  m_notes.push_back(std::move(note));
}

void CallNotes::end(std::uint64_t number, bool isDone) {
  if (isDone) return;
  m_notes.erase(std::remove_if(m_notes.begin(), m_notes.end(),
                               [&](const CallNote& note) { return note.number == number; }),
                m_notes.end());
}

std::optional<std::string> CallNotes::starterOf(const std::string& kind, const std::string& volumeId,
                                                std::int64_t nowMs) const {
  const auto found = std::find_if(m_notes.rbegin(), m_notes.rend(), [&](const CallNote& note) {
    return !note.cancels && fits(note, kind, volumeId, nowMs);
  });
  if (found == m_notes.rend()) return {};
  return found->actor;
}

bool CallNotes::wasCancelled(const std::string& kind, const std::string& volumeId, std::int64_t nowMs) const {
  return std::any_of(m_notes.begin(), m_notes.end(), [&](const CallNote& note) {
    return note.cancels && note.volumeId == volumeId && fits(note, kind, volumeId, nowMs);
  });
}

}  // namespace insight
