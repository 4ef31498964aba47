#include "session/lock_record.h"

#include <thread>
#include <utility>

#include "mirn_exception.h"
#include "session_messages.h"

LockRecord& LockRecord::instance() {
  static LockRecord record;
  return record;
}

void LockRecord::reset() { *this = {}; }

std::vector<std::string> LockRecord::take() { return std::exchange(m_requests, {}); }

void LockRecord::atTheNextRequest(std::function<void()> hook) { m_hook = std::move(hook); }

void LockRecord::note(SessionMutex& mutex, const std::string& request) {
  m_mutex = &mutex;
  m_requests.push_back(request);
  if (const auto hook = std::exchange(m_hook, nullptr)) {
    const std::vector<std::string> requests = m_requests;
    hook();
    m_requests = requests;
  }
}

std::string LockRecord::held() const {
  std::string held = "none";
  if (!m_mutex) return held;
  // Whoever asks may hold it himself.
  std::thread([this, &held] {
    if (!boost::shared_lock<SessionMutex>(*m_mutex, boost::try_to_lock)) {
      held = "exclusive";
    } else if (!boost::upgrade_lock<SessionMutex>(*m_mutex, boost::try_to_lock)) {
      held = "upgrade";
    } else if (!boost::unique_lock<SessionMutex>(*m_mutex, boost::try_to_lock)) {
      held = "shared";
    }
  }).join();
  return held;
}

namespace {

template <class Ownership>
Ownership noted(SessionMutex& mutex, const std::string& request) {
  LockRecord::instance().note(mutex, request);
  Ownership ownership(mutex, boost::try_to_lock);
  if (!ownership) throw MirnException(kErrorOperationFailed, kMsgSessionTimeout);
  return ownership;
}

UpgradeOwnership& notedStep(UpgradeOwnership& ownership) {
  LockRecord::instance().note(*ownership.mutex(), "exclusive");
  return ownership;
}

}  // namespace

template <>
SharedOwnership acquireShared(SessionMutex& mutex, std::int64_t seconds) {
  return noted<SharedOwnership>(mutex, "shared " + std::to_string(seconds));
}

template <>
UniqueOwnership acquireUnique(SessionMutex& mutex, std::int64_t seconds) {
  return noted<UniqueOwnership>(mutex, "unique " + std::to_string(seconds));
}

template <>
UpgradeOwnership acquireUpgrade(SessionMutex& mutex, std::int64_t seconds) {
  return noted<UpgradeOwnership>(mutex, "upgrade " + std::to_string(seconds));
}

template <>
UpgradeOwnership acquireUpgradeUntimed(SessionMutex& mutex) {
  return noted<UpgradeOwnership>(mutex, "upgrade for ever");
}

template <>
ExclusiveStep::ExclusiveStepOf(UpgradeOwnership& ownership) : m_exclusive(notedStep(ownership)) {}
