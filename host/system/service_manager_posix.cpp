#include <systemd/sd-daemon.h>

#include <cstdint>
#include <ctime>

#include "system/service_manager.h"

namespace host {

namespace {

/// How long the manager waits for a beat; zero when it does not.
std::chrono::microseconds watchdogTime() {
  std::uint64_t microseconds = 0;
  return std::chrono::microseconds(::sd_watchdog_enabled(0, &microseconds) > 0 ? microseconds : 0);
}

void tell(const std::string& text) { ::sd_notify(0, text.c_str()); }

/// The manager tells reloads from each other by it.
std::uint64_t monotonicMicroseconds() {
  constexpr std::uint64_t kMicrosecondsPerSecond = 1000000;
  constexpr std::uint64_t kNanosecondsPerMicrosecond = 1000;
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<std::uint64_t>(now.tv_sec) * kMicrosecondsPerSecond +
         static_cast<std::uint64_t>(now.tv_nsec) / kNanosecondsPerMicrosecond;
}

}  // namespace

void tellReady(const std::string& status) { tell("READY=1\nSTATUS=" + status); }

void tellReloading() { tell("RELOADING=1\nMONOTONIC_USEC=" + std::to_string(monotonicMicroseconds())); }

void tellStopping(std::chrono::milliseconds time) {
  const std::string microseconds = std::to_string(std::chrono::microseconds(time).count());
  std::string text = "STOPPING=1\nSTATUS=Stopping\nEXTEND_TIMEOUT_USEC=" + microseconds;
  if (watchdogTime().count() > 0) text += "\nWATCHDOG=1\nWATCHDOG_USEC=" + microseconds;
  tell(text);
}

/// systemd sees it by itself.
void tellLeaving(int) {}

std::chrono::microseconds beatInterval() { return watchdogTime() / 2; }

void tellAlive() { tell("WATCHDOG=1"); }

}  // namespace host
