#include "readiness/cause_index.h"

#include <utility>

#include "health/cause_kinds.h"

namespace insight {

namespace {

bool isOf(const Cause& cause, CauseKind kind) { return cause.kind == causeRow(kind).id; }

}  // namespace

CauseIndex::CauseIndex(std::vector<Cause> causes) : m_causes(std::move(causes)) {
  for (const Cause& cause : m_causes) {
    if (isOf(cause, CauseKind::kNoSpareFits)) {
      m_withoutSpare.push_back(&cause);
      m_arraysWithoutSpare.emplace(cause.object.id, &cause);
    }
    if (isOf(cause, CauseKind::kVolumeFailed) || isOf(cause, CauseKind::kVolumeDegraded)) {
      m_exposing.emplace(cause.object.id, &cause);
    }
    if (isOf(cause, CauseKind::kPictureOld)) m_oldPicture = &cause;
  }
}

const Cause* CauseIndex::exposing(const std::wstring& volumeId) const {
  const auto found = m_exposing.find(volumeId);
  return found == m_exposing.end() ? nullptr : found->second;
}

}  // namespace insight
