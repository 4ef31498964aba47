#ifndef MIRN_INSIGHT_READINESS_CAUSE_INDEX_H
#define MIRN_INSIGHT_READINESS_CAUSE_INDEX_H

#include <string>
#include <unordered_map>
#include <vector>

#include "health/cause.h"

namespace insight {

/// What health finds, as far as readiness asks for it. Not to be copied: parts point at each other.
class CauseIndex {
 public:
  explicit CauseIndex(std::vector<Cause> causes);
  CauseIndex(const CauseIndex&) = delete;
  CauseIndex& operator=(const CauseIndex&) = delete;

  /// Of arrays with redundancy that no spare fits, in the order of their list.
  const std::vector<const Cause*>& withoutSpare() const { return m_withoutSpare; }
  bool lacksSpare(const std::wstring& arrayId) const { return m_arraysWithoutSpare.count(arrayId) != 0; }

  /// Why a volume lacks redundancy, or has failed; null for any other.
  const Cause* exposing(const std::wstring& volumeId) const;

  /// Of the picture itself; null while that is believed.
  const Cause* oldPicture() const { return m_oldPicture; }

 private:
  using CausesByObject = std::unordered_map<std::wstring, const Cause*>;

  const std::vector<Cause> m_causes;
  std::vector<const Cause*> m_withoutSpare;
  CausesByObject m_arraysWithoutSpare;
  CausesByObject m_exposing;
  const Cause* m_oldPicture = nullptr;
};

}  // namespace insight

#endif
