#include "core/library.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <thread>

#include "atomic_file.h"
#include "core/environment.h"
#include "engine/work.h"
#include "narrow_path.h"
#include "rules/apply.h"
#include "scenario/loading.h"
#include "scenario/scenario.h"

namespace simulator {
namespace {

constexpr std::size_t kMaxSessions = 1024;

void say(const std::string& text) { std::cerr << "VEXL2: " << text << std::endl; }

/// No exception leaves the library.
template <class Body>
Status guarded(Body body) {
  try {
    return body();
  } catch (const Refusal& refusal) {
    return refusal.status();
  } catch (const std::exception& error) {
    say(error.what());
    return VEX_STATUS_INTERNAL_ERROR;
  }
}

}  // namespace

Library& Library::instance() {
  static Library* const kInstance = new Library;
  return *kInstance;
}

Library::Library(Clock clock) : m_clock(std::move(clock)), m_nextSession(kFirstSessionHandle) {}

Status Library::perform(const char* operation, const Body& body) {
  return guarded([&]() -> Status {
    const Faults::Order order = m_faults.next(operation);
    if (order.delayMs > 0) std::this_thread::sleep_for(std::chrono::milliseconds(order.delayMs));
    if (order.status) return *order.status;
    Lock lock(m_mutex);
    return body(lock);
  });
}

Status Library::initialize(const char* operation) {
  return perform(operation, [&](Lock&) -> Status {
    require(!m_isInitialized, VEX_STATUS_ALREADY_INITIALIZED);
    try {
      begin();
    } catch (const ScenarioError& error) {
      say(error.what());
      return VEX_STATUS_FAILED;
    }
    m_isInitialized = true;
    return VEX_STATUS_SUCCESS;
  });
}

void Library::begin() {
  const Environment environment = readEnvironment();
  Machine machine = m_nextMachine ? std::move(*m_nextMachine) : firstMachine(environment);
  m_nextMachine.reset();
  machine.changes = m_machine.changes + 1;
  m_machine = std::move(machine);
  m_statePath = environment.statePath;
  m_waitCapMs = std::min(m_waitCapMs, environment.eventWaitCapMs);
  m_clock.setSpeed(m_orderedSpeed.value_or(environment.clockSpeed));
  m_clock.take();
  save();
}

Status Library::finalize(const char* operation) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    catchUp();
    save();
    m_isInitialized = false;
    m_sessions.clear();
    m_subscriptions.clear();
    m_changed.notify_all();
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::openSession(const char* operation, Handle* session) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(session != nullptr, VEX_STATUS_INVALID_PARAMETER);
    require(m_sessions.size() < kMaxSessions, VEX_STATUS_NO_SESSION_LEFT);
    *session = *m_sessions.insert(takeSessionHandle()).first;
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::closeSession(const char* operation, Handle session) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(m_sessions.erase(session) == 1, VEX_STATUS_INVALID_SESSION);
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::read(const char* operation, const void* out, const Read& body) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(out != nullptr, VEX_STATUS_INVALID_PARAMETER);
    catchUp();
    body(m_machine);
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::read(const char* operation, Handle session, const void* out, const Read& body) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(out != nullptr, VEX_STATUS_INVALID_PARAMETER);
    require(m_sessions.count(session) == 1, VEX_STATUS_INVALID_SESSION);
    catchUp();
    body(m_machine);
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::change(const char* operation, const Change& body) {
  return perform(operation, [&](Lock&) { return changeLocked(body); });
}

Status Library::control(const Change& body) {
  return guarded([&] {
    const Lock lock(m_mutex);
    return changeLocked(body);
  });
}

Status Library::inspect(const Read& body) {
  return guarded([&] {
    const Lock lock(m_mutex);
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    catchUp();
    body(m_machine);
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::changeLocked(const Change& body) {
  require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
  catchUp();
  const std::uint64_t before = m_machine.changes;
  const Status status = apply(m_machine, body);
  publish(before);
  return status;
}

Status Library::subscribe(const char* operation, Handle* subscription) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(subscription != nullptr, VEX_STATUS_INVALID_PARAMETER);
    catchUp();
    *subscription = m_subscriptions.emplace(takeSessionHandle(), m_machine.changes).first->first;
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::unsubscribe(const char* operation, Handle subscription) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(m_subscriptions.erase(subscription) == 1, VEX_STATUS_INVALID_HANDLE);
    m_changed.notify_all();
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::wait(const char* operation, std::uint32_t timeoutMs, Handle subscription) {
  return perform(operation, [&](Lock& lock) -> Status {
    const Clock::Instant begin = m_clock.now();
    for (;;) {
      if (hasChanged(subscription)) return VEX_STATUS_SUCCESS;
      const auto limit = std::chrono::milliseconds(std::min(timeoutMs, m_waitCapMs));
      const auto nextEnd = timeToNextEnd(m_machine);
      if (m_clock.now() - begin >= limit) {
        if (nextEnd) save();  // so that a restart loses no more progress than one wait
        return VEX_STATUS_TIMEOUT;
      }
      const Clock::Instant workEnds = nextEnd ? m_clock.whenPassed(*nextEnd) : Clock::Instant::max();
      m_changed.wait_until(lock, std::min(begin + limit, workEnds));
    }
  });
}

bool Library::hasChanged(Handle subscription) {
  require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
  const auto found = m_subscriptions.find(subscription);
  require(found != m_subscriptions.end(), VEX_STATUS_INVALID_HANDLE);
  catchUp();
  const bool result = found->second != m_machine.changes;
  found->second = m_machine.changes;
  return result;
}

Status Library::loadMachine(Machine machine) {
  const Lock lock(m_mutex);
  if (!m_isInitialized) {
    m_nextMachine = std::move(machine);
    return VEX_STATUS_SUCCESS;
  }
  const std::uint64_t before = m_machine.changes;
  machine.changes = before + 1;
  m_machine = std::move(machine);
  m_clock.take();
  publish(before);
  return VEX_STATUS_SUCCESS;
}

Status Library::advanceClock(std::uint64_t milliseconds) {
  const Lock lock(m_mutex);
  if (!m_isInitialized) return VEX_STATUS_NOT_INITIALIZED;
  m_clock.advance(milliseconds);
  catchUp();
  return VEX_STATUS_SUCCESS;
}

Status Library::setClockSpeed(std::uint32_t speed) {
  const Lock lock(m_mutex);
  m_orderedSpeed = speed;
  m_clock.setSpeed(speed);
  m_changed.notify_all();
  return VEX_STATUS_SUCCESS;
}

Status Library::capWait(std::uint32_t milliseconds) {
  const Lock lock(m_mutex);
  m_waitCapMs = milliseconds;
  m_changed.notify_all();
  return VEX_STATUS_SUCCESS;
}

/// The machine moves on only when somebody looks: what happened meanwhile happens now.
void Library::catchUp() {
  const std::uint64_t before = m_machine.changes;
  advance(m_machine, m_clock.take());
  publish(before);
}

void Library::publish(std::uint64_t changesBefore) {
  if (m_machine.changes == changesBefore) return;
  save();
  m_changed.notify_all();
}

void Library::save() const {
  if (m_statePath.empty()) return;
  try {
    replaceFile(narrowPath(m_statePath), writeScenario(m_machine), Readers::kEveryone);
  } catch (const std::runtime_error&) {
    say(m_statePath + ": cannot be written");
  }
}

Handle Library::takeSessionHandle() {
  require(m_nextSession != 0, VEX_STATUS_NO_SESSION_LEFT);
  return m_nextSession++;
}

}  // namespace simulator
