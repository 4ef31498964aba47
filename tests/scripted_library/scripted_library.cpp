#include "scripted_library/scripted_library.h"

#include <algorithm>

namespace {

/// The reactions that this call sets off, in the order of planning. Every trigger counts the call.
template <class Reaction>
std::vector<Reaction> reactionsTo(const std::string& operation,
                                  std::vector<std::pair<CallTrigger, Reaction>>& plan) {
  std::vector<Reaction> reactions;
  for (auto& [trigger, reaction] : plan) {
    if (trigger.fires(operation)) reactions.push_back(reaction);
  }
  return reactions;
}

}  // namespace

ScriptedLibrary& ScriptedLibrary::instance() {
  // Never destroyed: a thread may still wait in it when the process ends.
  static ScriptedLibrary& library = *new ScriptedLibrary;
  return library;
}

ScriptedLibrary& ScriptedLibrary::fresh() {
  instance().reset();
  return instance();
}

void ScriptedLibrary::reset() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_machine = small_machine::make();
  m_calls.clear();
  m_recording = true;
  m_answers.clear();
  m_hooks.clear();
  m_effects.clear();
  m_sessions.clear();
  m_lastSession = 0;
  m_events.reset();
}

void ScriptedLibrary::setMachine(ScriptedMachine machine) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_machine = std::move(machine);
}

ScriptedMachine ScriptedLibrary::machine() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_machine;
}

void ScriptedLibrary::change(const std::function<void(ScriptedMachine&)>& change) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  change(m_machine);
}

ScriptedCalls ScriptedLibrary::calls() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_calls;
}

ScriptedCalls ScriptedLibrary::takeCalls() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return std::exchange(m_calls, {});
}

void ScriptedLibrary::clearCalls() { takeCalls(); }

std::vector<std::string> ScriptedLibrary::callTexts() const { return textsOf(calls()); }

std::vector<std::string> ScriptedLibrary::actionTexts() const {
  return textsOf(onlyOf(OperationKind::ACTION, calls()));
}

void ScriptedLibrary::recordCalls(bool on) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_recording = on;
}

void ScriptedLibrary::answer(CallTrigger when, VEX_STATUS status) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_answers.emplace_back(std::move(when), status);
}

void ScriptedLibrary::before(CallTrigger when, Hook hook) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_hooks.emplace_back(std::move(when), std::move(hook));
}

void ScriptedLibrary::effect(CallTrigger when, Effect effect) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_effects.emplace_back(std::move(when), std::move(effect));
}

bool ScriptedLibrary::answersPending() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return std::any_of(m_answers.begin(), m_answers.end(),
                     [](const auto& planned) { return planned.first.pending(); });
}

std::size_t ScriptedLibrary::openSessions() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_sessions.size();
}

VEX_HANDLE ScriptedLibrary::openSession() {
  m_sessions.insert(++m_lastSession);
  return m_lastSession;
}

bool ScriptedLibrary::closeSession(VEX_HANDLE session) { return m_sessions.erase(session) != 0; }

/// The part ahead of the answer; what is planned for the call is settled when it is recorded, before its
/// hooks run.
std::optional<VEX_STATUS> ScriptedLibrary::begin(ScriptedCall& call, const Arguments& arguments,
                                                 std::vector<Effect>& effects) {
  std::vector<Hook> hooks;
  std::vector<VEX_STATUS> answers;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    hooks = reactionsTo(call.operation, m_hooks);
    effects = reactionsTo(call.operation, m_effects);
    answers = reactionsTo(call.operation, m_answers);
    if (m_recording || !hooks.empty() || !effects.empty()) call.arguments = arguments();
    if (m_recording) m_calls.push_back(call);
  }
  for (const Hook& hook : hooks) hook(call);
  if (answers.empty()) return std::nullopt;
  return answers.front();
}

VEX_STATUS ScriptedLibrary::perform(const char* operation, const Arguments& arguments, const Answer& answer) {
  ScriptedCall call{operation, scriptedOperation(operation).kind, {}, std::this_thread::get_id()};
  std::vector<Effect> effects;
  if (const auto planned = begin(call, arguments, effects)) return *planned;
  const std::lock_guard<std::mutex> lock(m_mutex);
  for (const Effect& effect : effects) effect(m_machine, call);
  return answer(m_machine);
}

VEX_STATUS ScriptedLibrary::performWait(const char* operation, const Arguments& arguments) {
  bool waits = false;
  const VEX_STATUS status = perform(operation, arguments, [&waits](ScriptedMachine&) {
    waits = true;
    return VEX_STATUS_SUCCESS;
  });
  return waits ? m_events.wait() : status;
}
