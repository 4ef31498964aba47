#include "scripted_library/call_trigger.h"

#include <utility>

#include "scripted_library/scripted_operations.h"

CallTrigger::CallTrigger(std::string operation, unsigned nth, bool always)
    : m_operation(std::move(operation)), m_nth(nth), m_always(always) {}

bool CallTrigger::fires(const std::string& operation) {
  if (!m_operation.empty() && m_operation != operation) return false;
  ++m_seen;
  return m_always ? m_seen >= m_nth : m_seen == m_nth;
}

CallTrigger onCall(const std::string& operation, unsigned nth) {
  return CallTrigger(scriptedOperation(operation).name, nth, false);
}

CallTrigger onCallsFrom(const std::string& operation, unsigned nth) {
  return CallTrigger(scriptedOperation(operation).name, nth, true);
}

CallTrigger onEveryCall(const std::string& operation) { return onCallsFrom(operation, 1); }

CallTrigger onAnyCall(unsigned nth) { return CallTrigger("", nth, false); }
