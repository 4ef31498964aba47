#include "subscriptions.h"

#include <algorithm>
#include <utility>

namespace vexl2 {

Subscriptions::Subscriptions(SessionHandles& handles, std::function<Instant()> now)
    : m_handles(handles), m_now(std::move(now)) {}

Handle Subscriptions::add() { return m_told.emplace(m_handles.take(), m_changes).first->first; }

void Subscriptions::remove(Handle subscription) {
  require(m_told.erase(subscription) == 1, VEX_STATUS_INVALID_HANDLE);
  m_changed.notify_all();
}

void Subscriptions::clear() {
  m_told.clear();
  ++m_endings;
  m_changed.notify_all();
}

void Subscriptions::tell() {
  ++m_changes;
  m_changed.notify_all();
}

void Subscriptions::cap(std::chrono::milliseconds longest) {
  m_cap = longest;
  m_changed.notify_all();
}

Status Subscriptions::wait(Lock& lock, Handle subscription, std::chrono::milliseconds timeout,
                           const Look& look) {
  const std::uint64_t endings = m_endings;
  const Instant begin = m_now();
  for (;;) {
    if (m_endings != endings) return VEX_STATUS_NOT_INITIALIZED;
    const Instant next = look();
    if (takeNews(subscription)) return VEX_STATUS_SUCCESS;
    const Instant end = begin + std::min(timeout, m_cap);
    if (m_now() >= end) return VEX_STATUS_TIMEOUT;
    m_changed.wait_until(lock, std::min(end, next));
  }
}

bool Subscriptions::takeNews(Handle subscription) {
  const auto found = m_told.find(subscription);
  require(found != m_told.end(), VEX_STATUS_INVALID_HANDLE);
  return std::exchange(found->second, m_changes) != m_changes;
}

}  // namespace vexl2
