#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_LIBRARY_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_SCRIPTED_LIBRARY_H

#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "scripted_library/call_trigger.h"
#include "scripted_library/event_gate.h"
#include "scripted_library/scripted_call.h"
#include "scripted_library/scripted_machine.h"
#include "scripted_library/small_machine.h"
#include "VEXL2.h"

/// The test's hand on the library named VEXL2 that stands in for the closed one. It answers all fifty
/// operations from a `ScriptedMachine`, records each call, fails the calls that the test chooses, and lets
/// the test look in during a call.
///
///     ScriptedLibrary& library = ScriptedLibrary::fresh();
///     library.answer(onCall("VexVolumeRebuild"), VEX_STATUS_INVALID_STATE);
///     ... act ...
///     EXPECT_THAT(library.actionTexts(), ElementsAre("VexVolumeRebuild(51, 23)"));
///
/// Actions answer 0 and change nothing, unless the test gives them an `effect`. `VexEventWait` blocks until
/// the test wakes or releases it; **call `events().release()` before joining a thread that waits there**
/// (`TearDown` is the place). Reads with a session that is not open answer 8, with an unknown handle 3, and
/// null out-arguments are answered with 2.
///
/// One a process. Every operation may be called from any thread. Hooks run unlocked and may call the library
/// or this object; effects and `change` run locked and may not.
class ScriptedLibrary {
 public:
  using Hook = std::function<void(const ScriptedCall&)>;
  using Effect = std::function<void(ScriptedMachine&, const ScriptedCall&)>;

  /// The library with the small machine, an empty record, nothing planned, and event waits that block.
  /// No thread may be inside the library.
  static ScriptedLibrary& fresh();

  /// The library as it is.
  static ScriptedLibrary& instance();

  // The picture.

  void setMachine(ScriptedMachine machine);
  /// A copy.
  ScriptedMachine machine() const;
  /// Runs `change` on the machine between two calls of the library.
  void change(const std::function<void(ScriptedMachine&)>& change);

  // What was called, in order. Calls are recorded when they begin.

  ScriptedCalls calls() const;
  /// As `calls`, and the record is empty afterwards.
  ScriptedCalls takeCalls();
  void clearCalls();
  std::vector<std::string> callTexts() const;
  /// Only the calls that make the library do something; empty when a request was refused before the library.
  std::vector<std::string> actionTexts() const;
  /// Off: calls are neither recorded nor described, for machines of thousands of devices. On at the start.
  void recordCalls(bool on);

  // What is planned. Triggers count from now. Of several answers for one call the one planned first holds.

  /// The call returns `status` and does nothing else.
  void answer(CallTrigger when, VEX_STATUS status);
  /// Runs before the call is answered; a call with a planned answer runs its hooks too.
  void before(CallTrigger when, Hook hook);
  /// Changes the machine as part of the call, ahead of what the call returns. Not run when an
  /// answer is planned.
  void effect(CallTrigger when, Effect effect);
  /// Some planned answer for a single call has not been given yet.
  bool answersPending() const;

  /// Where `VexEventWait` waits.
  EventGate& events() { return m_events; }

  /// Sessions that were opened and not closed.
  std::size_t openSessions() const;

  // The library's side: what the fifty operations have in common.

  using Arguments = std::function<std::vector<ScriptedArgument>()>;
  using Answer = std::function<VEX_STATUS(ScriptedMachine&)>;

  /// Records a call, runs its hooks, and gives the planned status or what `answer` says of the machine.
  VEX_STATUS perform(const char* operation, const Arguments& arguments, const Answer& answer);
  /// As `perform`, for an event wait: nothing is locked while it waits.
  VEX_STATUS performWait(const char* operation, const Arguments& arguments);
  /// Number of the session just opened: 1, 2, ... . Called inside an answer, as the two below.
  VEX_HANDLE openSession();
  /// False: there is no such session.
  bool closeSession(VEX_HANDLE session);
  bool isOpen(VEX_HANDLE session) const { return m_sessions.count(session) != 0; }

 private:
  template <class Reaction>
  using Plan = std::vector<std::pair<CallTrigger, Reaction>>;

  void reset();
  std::optional<VEX_STATUS> begin(ScriptedCall& call, const Arguments& arguments,
                                  std::vector<Effect>& effects);

  mutable std::mutex m_mutex;  // guards everything below but the gate
  ScriptedMachine m_machine;
  ScriptedCalls m_calls;
  bool m_recording = true;
  Plan<VEX_STATUS> m_answers;
  Plan<Hook> m_hooks;
  Plan<Effect> m_effects;
  std::set<VEX_HANDLE> m_sessions;
  VEX_HANDLE m_lastSession = 0;
  EventGate m_events;
};

#endif
