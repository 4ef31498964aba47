#ifndef MIRN_SIMULATOR_CORE_LIBRARY_H
#define MIRN_SIMULATOR_CORE_LIBRARY_H

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>

#include "core/environment.h"
#include "engine/clock.h"
#include "engine/timeline.h"
#include "fault_points.h"
#include "model/machine.h"
#include "sessions.h"
#include "state/state_store.h"
#include "subscriptions.h"

namespace simulator {

/// The library behind its C operations: one machine, its sessions and subscriptions, and the lock that guards
/// them. Every operation may be called from any thread and answers with a status.
class Library {
 public:
  using Read = std::function<void(const Machine&)>;
  using Change = std::function<void(Machine&)>;

  /// The one that the C operations use. It is never destroyed: a thread may still wait in it
  /// when the program ends.
  static Library& instance();

  explicit Library(Clock clock = Clock(), StateOptions stateOptions = {});

  /// `operation` is the name under which faults are ordered, here and below.
  Status initialize(const char* operation);
  Status finalize(const char* operation);
  Status openSession(const char* operation, Handle* session);
  Status closeSession(const char* operation, Handle session);

  /// Reads the machine without a session.
  Status read(const char* operation, const void* out, const Read& body);

  /// Reads the machine in a session. `out` is refused when null.
  Status read(const char* operation, Handle session, const void* out, const Read& body);

  /// Changes the machine: `body` raises a `Refusal` before it has changed anything, or changes and returns.
  /// The consequences are drawn, kept and told to the subscribers. A change that cannot be kept is taken back
  /// and refused with 15.
  Status change(const char* operation, const Change& body);

  Status subscribe(const char* operation, Handle* subscription);
  Status unsubscribe(const char* operation, Handle subscription);

  /// Blocks until something has changed since the last wait of the subscription, or since it began.
  Status wait(const char* operation, std::uint32_t timeoutMs, Handle subscription);

  // Controls; they cannot be made to fail by a fault.

  /// The scenario that `initialize` takes instead of VEXL2_SCENARIO and VEXL2_STATE; taken at once
  /// when initialised.
  Status loadMachine(Machine machine);

  /// Like `change`, also with a stopped clock, but no operation that a fault could reach.
  Status control(const Change& body);

  Status inspect(const Read& body);

  /// Why a restart would find the machine behind the present one, in one line; empty when it would not.
  std::string whyBehind();

  Status advanceClock(std::uint64_t milliseconds);
  Status setClockSpeed(std::uint32_t speed);
  Status capWait(std::uint32_t milliseconds);
  vexl2::FaultPoints& faults() { return m_faults; }

 private:
  using Lock = std::unique_lock<std::mutex>;
  using Body = std::function<Status(Lock&)>;

  Status perform(const char* operation, const Body& body);
  Status changeLocked(const Change& body);
  void begin();
  Machine firstMachine(const Environment& environment, StateStore& store);
  void catchUp();
  void countTime();
  void moveOn();
  void saveProgress();

  // Guarded by m_mutex.
  std::mutex m_mutex;
  bool m_isInitialized = false;
  Machine m_machine;
  std::optional<Machine> m_nextMachine;
  Clock m_clock;
  Timeline m_timeline;
  std::optional<std::uint32_t> m_orderedSpeed;  ///< wins over the environment
  StateOptions m_stateOptions;
  StateStore m_store;
  Clock::Instant m_progressSaved = Clock::Instant::min();
  vexl2::SessionHandles m_handles;
  vexl2::Sessions m_sessions;
  vexl2::Subscriptions m_subscriptions;

  vexl2::FaultPoints m_faults;  ///< has its own lock
};

}  // namespace simulator

#endif
