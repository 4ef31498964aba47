#include "event_time.h"

#include <cwchar>

#include "local_time.h"
#include "tick_clock.h"

namespace {

constexpr std::size_t kTextSize = 26;  // with the terminating zero

std::wstring widened(const char* narrow) {
  wchar_t wide[kTextSize] = {};
  std::mbstate_t state{};
  const std::size_t length = std::mbsrtowcs(wide, &narrow, kTextSize, &state);
  return length == static_cast<std::size_t>(-1) ? std::wstring() : std::wstring(wide, length);
}

}  // namespace

std::wstring eventTimeText(std::int64_t ticks) {
  const auto time = localTime(static_cast<std::time_t>(ticks / kTicksPerSecond));
  char narrow[kTextSize] = {};
  if (!time || std::strftime(narrow, sizeof narrow, "%x %I:%M:%S %p", &*time) == 0) return {};
  return widened(narrow);
}
