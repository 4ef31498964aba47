#include "logger.h"
#include "mirn_session.h"
#include "settings_store.h"

namespace {

/// The parameters of the storage driver's service, which acts on the value.
const std::wstring kDriverKeyPath = L"SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device";
const std::wstring kLocateTimeoutName = L"LedLocateTimeout";

const std::wstring kUnreadable = L"Could not read Mirn Plugin configuration to permission denied";
const std::wstring kOutOfRange =
    L"Timeout value exceeds legal values in the configuration and will be set to default";

/// Declared with the module's other texts; nothing uses it.
[[maybe_unused]] const std::wstring kConfigurationName = L".mirn-plugin-config";

bool isLegalTimeout(std::int64_t seconds) {
  return seconds >= kLocateTimeoutMin && seconds <= kLocateTimeoutMax;
}

void logWarning(const std::wstring& text) { ovra::Logger::instance().log(LogLevel::kWarning, text); }

}  // namespace

/// `m_locateTimeout` has its default, and keeps it unless the store has a legal value.
void MirnSession::readLocateTimeout() {
  const std::unique_ptr<ISettingsKey> key = makeSettingsStore()->open(kDriverKeyPath, SettingsAccess::kRead);
  if (!key) return logWarning(kUnreadable);
  const boost::optional<std::uint32_t> stored = key->read(kLocateTimeoutName);
  if (!stored) return logWarning(kUnreadable);
  if (!isLegalTimeout(*stored)) return logWarning(kOutOfRange);
  m_locateTimeout = *stored;
}

std::int64_t MirnSession::getLocateTimeout() { return m_locateTimeout; }

bool MirnSession::setLocateTimeout(std::int64_t seconds) {
  if (!isLegalTimeout(seconds)) return false;
  const std::unique_ptr<ISettingsKey> key = makeSettingsStore()->open(kDriverKeyPath, SettingsAccess::kWrite);
  return key && key->write(kLocateTimeoutName, static_cast<std::uint32_t>(seconds));
}
