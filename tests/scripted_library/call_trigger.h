#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_CALL_TRIGGER_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_CALL_TRIGGER_H

#include <string>

/// Chooses calls of the library, counted from 1 and from the moment when the choice is handed over.
class CallTrigger {
 public:
  /// Every call of `operation` ("" for any) from the n-th on when `always`, else the n-th alone.
  CallTrigger(std::string operation, unsigned nth, bool always);

  /// Counts this call; true when it is one of those chosen.
  bool fires(const std::string& operation);

  /// A single call is chosen and has not come yet.
  bool pending() const { return !m_always && m_seen < m_nth; }

 private:
  std::string m_operation;
  unsigned m_nth;
  bool m_always;
  unsigned m_seen = 0;
};

/// The n-th call of an operation, once. An unknown name raises `std::invalid_argument`, here and below.
CallTrigger onCall(const std::string& operation, unsigned nth = 1);

/// Every call of an operation from the n-th on.
CallTrigger onCallsFrom(const std::string& operation, unsigned nth);

/// Every call of an operation.
CallTrigger onEveryCall(const std::string& operation);

/// The n-th call of all, whatever the operation, once.
CallTrigger onAnyCall(unsigned nth);

#endif
