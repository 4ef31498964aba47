#include "mirn_session.h"
#include "stored_setting.h"

void MirnSession::readSettings() { m_locateTimeout = readSetting(kLocateTimeoutSetting); }

std::int64_t MirnSession::getLocateTimeout() { return m_locateTimeout; }

bool MirnSession::setLocateTimeout(std::int64_t seconds) {
  return storeSetting(kLocateTimeoutSetting, seconds);
}
