#ifndef MIRN_TESTS_LOGGING_FAKE_EVENT_LOG_API_H
#define MIRN_TESTS_LOGGING_FAKE_EVENT_LOG_API_H

#include <cstdint>
#include <string>
#include <vector>

/// The system's event log as a test wants it, and the calls that it got.
struct FakeEventLog {
  std::vector<std::wstring> calls;

  std::uint32_t createError = 0;
  std::wstring refusedValue;  ///< Setting the value of this name fails.
  std::wstring path = L"/bin/sh";
  std::uint32_t pathError = 0;
  bool opens = true;
  bool reports = true;
  bool closes = true;
};

/// What `makeEventLogApi` stands on. Assign `{}` for a log that refuses nothing.
extern FakeEventLog fakeEventLog;

#endif
