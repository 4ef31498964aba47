#include "scripted_library/event_gate.h"

#include <thread>

VEX_STATUS EventGate::wait() {
  std::unique_lock<std::mutex> lock(m_mutex);
  ++m_waits;
  m_changed.notify_all();
  m_changed.wait(lock, [this] { return m_released || !m_wakes.empty(); });
  if (!m_wakes.empty()) {
    const VEX_STATUS status = m_wakes.front();
    m_wakes.pop_front();
    m_waitLastWoken = m_waits;
    return status;
  }
  lock.unlock();
  std::this_thread::yield();
  return VEX_STATUS_TIMEOUT;
}

void EventGate::wake(VEX_STATUS status) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_wakes.push_back(status);
  m_changed.notify_all();
}

void EventGate::wakeAndSettle(VEX_STATUS status) {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_wakes.push_back(status);
  m_changed.notify_all();
  m_changed.wait(lock, [this] { return m_wakes.empty() && m_waits > m_waitLastWoken; });
}

void EventGate::waitForEventWaits(std::uint64_t count) {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_changed.wait(lock, [this, count] { return m_waits >= count; });
}

std::uint64_t EventGate::eventWaits() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_waits;
}

void EventGate::release() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_released = true;
  m_changed.notify_all();
}

void EventGate::reset() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_wakes.clear();
  m_waits = 0;
  m_waitLastWoken = 0;
  m_released = false;
}
