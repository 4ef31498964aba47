#include "mirn_exception.h"
#include "mirn_session.h"
#include "status_text.h"

void MirnSession::act(const LibraryCall& call, const StatusCheck& check) {
  UpgradeOwnership ownership = acquireUpgrade(m_mutex, m_lockTimeout);
  const VEX_STATUS status = call();
  const ExclusiveStep exclusive(ownership);
  check(status);
}

void MirnSession::act(const LibraryCall& call) {
  act(call, [this](VEX_STATUS status) { checkStatus(status); });
}

void MirnSession::actMapped(const LibraryCall& call, VEX_STATUS specialStatus, const char* errorId) {
  act(call, [=](VEX_STATUS status) { checkStatusMapped(status, specialStatus, errorId); });
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
