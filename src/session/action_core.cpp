#include "mirn_exception.h"
#include "mirn_session.h"
#include "status_text.h"

void MirnSession::carryOut(const PreparedCall& call) {
  carryOut(call, [] {});
}

void MirnSession::carryOut(const PreparedCall& call, const std::function<void()>& precondition) {
  Picture before;  // destroyed when nobody waits for the lock any more
  UpgradeOwnership ownership = acquireUpgrade(m_mutex, m_lockTimeout);
  before = m_snapshot;
  precondition();
  const VEX_STATUS status = call.make();
  const ExclusiveStep exclusive(ownership);
  checkStatusMapped(status, call.mappedStatus, call.mappedErrorId);
}

void MirnSession::checkStatus(VEX_STATUS status) {
  const std::string text = statusToText(status);
  refresh(true);
  if (status != VEX_STATUS_SUCCESS) throw MirnException(statusToErrorId(status), text);
}

void MirnSession::checkStatusMapped(VEX_STATUS status, VEX_STATUS specialStatus, const char* errorId) {
  try {
    checkStatus(status);
  } catch (const MirnException& error) {
    if (status != specialStatus) throw;
    throw MirnException(errorId, error.what());
  }
}
