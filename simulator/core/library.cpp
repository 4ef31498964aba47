#include "core/library.h"

#include <algorithm>
#include <chrono>

#include "core/environment.h"
#include "engine/work.h"
#include "model/edit.h"
#include "perform.h"
#include "rules/apply.h"
#include "scenario/changes.h"
#include "scenario/loading.h"
#include "scenario/scenario.h"

namespace simulator {
namespace {

using vexl2::guarded;
using vexl2::say;

}  // namespace

Library& Library::instance() {
  static Library* const kInstance = new Library;
  return *kInstance;
}

Library::Library(Clock clock, StateOptions stateOptions)
    : m_clock(std::move(clock)),
      m_stateOptions(std::move(stateOptions)),
      m_sessions(m_handles),
      m_subscriptions(m_handles, [this] { return m_clock.now(); }) {}

Status Library::perform(const char* operation, const Body& body) {
  return vexl2::perform(m_faults, operation, [&]() -> Status {
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
  StateStore store;
  if (!environment.statePath.empty()) store = StateStore(environment.statePath, m_stateOptions);
  Machine machine = firstMachine(environment, store);
  store.begin(writeScenario(machine));
  machine.changes = m_machine.changes + 1;
  m_machine = std::move(machine);
  m_store = std::move(store);
  m_subscriptions.cap(
      std::min(m_subscriptions.longest(), std::chrono::milliseconds(environment.eventWaitCapMs)));
  m_clock.setSpeed(m_orderedSpeed.value_or(environment.clockSpeed));
  m_clock.take();
  m_timeline.plan(m_machine);
}

/// The one given by hand, else the one that is kept, else that of the scenario.
Machine Library::firstMachine(const Environment& environment, StateStore& store) {
  if (m_nextMachine) {
    store.disregard();
    Machine machine = std::move(*m_nextMachine);
    m_nextMachine.reset();
    return machine;
  }
  auto kept = store.load();
  return kept ? std::move(*kept) : scenarioMachine(environment);
}

Status Library::finalize(const char* operation) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    countTime();
    m_store.end(writeScenario(m_machine));
    m_isInitialized = false;
    m_sessions.clear();
    m_subscriptions.clear();
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::openSession(const char* operation, Handle* session) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(session != nullptr, VEX_STATUS_INVALID_PARAMETER);
    *session = m_sessions.open();
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::closeSession(const char* operation, Handle session) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    m_sessions.close(session);
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
    m_sessions.requireOpen(session);
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
    countTime();
    body(m_machine);
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::changeLocked(const Change& body) {
  require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
  countTime();
  Edit edit(m_machine);
  const Status status = apply(m_machine, body);
  const std::string changes = writeChanges(edit);
  const auto whole = [&] { return writeScenario(m_machine); };
  if (!m_store.save(changes, whole)) return VEX_STATUS_FAILED;
  edit.keep();
  m_timeline.plan(m_machine);
  if (!changes.empty()) m_subscriptions.tell();  // what leaves everything as it was wakes nobody
  return status;
}

Status Library::subscribe(const char* operation, Handle* subscription) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    require(subscription != nullptr, VEX_STATUS_INVALID_PARAMETER);
    catchUp();
    *subscription = m_subscriptions.add();
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::unsubscribe(const char* operation, Handle subscription) {
  return perform(operation, [&](Lock&) {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    m_subscriptions.remove(subscription);
    return VEX_STATUS_SUCCESS;
  });
}

Status Library::wait(const char* operation, std::uint32_t timeoutMs, Handle subscription) {
  return perform(operation, [&](Lock& lock) -> Status {
    require(m_isInitialized, VEX_STATUS_NOT_INITIALIZED);
    const auto look = [&] {
      catchUp();
      return m_timeline.next(m_machine, m_clock);
    };
    const Status status =
        m_subscriptions.wait(lock, subscription, std::chrono::milliseconds(timeoutMs), look);
    saveProgress();
    return status;
  });
}

/// A restart loses no more progress than this, while somebody waits for events.
void Library::saveProgress() {
  constexpr std::chrono::seconds kBetween(5);
  if (!m_isInitialized || !m_timeline.isWorking() || m_clock.now() - kBetween < m_progressSaved) return;
  countTime();
  m_store.saveProgress(writeProgress(m_machine), [&] { return writeScenario(m_machine); });
  m_progressSaved = m_clock.now();
}

Status Library::loadMachine(Machine machine) {
  const Lock lock(m_mutex);
  if (!m_isInitialized) {
    m_nextMachine = std::move(machine);
    return VEX_STATUS_SUCCESS;
  }
  if (!m_store.replace(writeScenario(machine))) return VEX_STATUS_FAILED;
  machine.changes = m_machine.changes + 1;
  m_machine = std::move(machine);
  m_clock.take();
  m_timeline.plan(m_machine);
  m_subscriptions.tell();
  return VEX_STATUS_SUCCESS;
}

Status Library::advanceClock(std::uint64_t milliseconds) {
  const Lock lock(m_mutex);
  if (!m_isInitialized) return VEX_STATUS_NOT_INITIALIZED;
  m_clock.advance(milliseconds);
  catchUp();
  m_subscriptions.lookAgain();  // what ends next has come nearer
  return VEX_STATUS_SUCCESS;
}

Status Library::setClockSpeed(std::uint32_t speed) {
  const Lock lock(m_mutex);
  m_orderedSpeed = speed;
  m_clock.setSpeed(speed);
  m_subscriptions.lookAgain();
  return VEX_STATUS_SUCCESS;
}

Status Library::capWait(std::uint32_t milliseconds) {
  const Lock lock(m_mutex);
  m_subscriptions.cap(std::chrono::milliseconds(milliseconds));
  return VEX_STATUS_SUCCESS;
}

/// The machine moves on only when somebody looks: what happened meanwhile happens now.
void Library::catchUp() {
  m_timeline.pass(m_machine, m_clock.take());
  if (m_timeline.isDue(m_machine)) moveOn();
  if (m_timeline.takePercent(m_machine, m_clock.now())) m_subscriptions.tell();
}

/// Whoever reads or changes the whole machine wants to find all work where it stands.
void Library::countTime() {
  catchUp();
  if (m_machine.pendingMs > 0) m_timeline.catchUp(m_machine);  // nothing ends within that time
}

/// What happens by itself cannot be refused.
void Library::moveOn() {
  const std::uint64_t before = m_machine.changes;
  Edit edit(m_machine);
  m_timeline.catchUp(m_machine);
  if (m_machine.changes != before) {
    m_store.saveProgress(writeChanges(edit), [&] { return writeScenario(m_machine); });
    m_subscriptions.tell();
  }
  edit.keep();
}

std::string Library::whyBehind() {
  const Lock lock(m_mutex);
  return m_store.whyBehind();
}

}  // namespace simulator
