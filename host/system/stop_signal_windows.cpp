#include "system/stop_signal_windows.h"

#include <windows.h>

#include <atomic>

#include "system/process.h"
#include "system/stop_signal.h"
#include "system_reason.h"

namespace host {

namespace {

/// What the shell sees of a program that Ctrl+C ended.
constexpr int kEndedByCtrlC = static_cast<int>(STATUS_CONTROL_C_EXIT);

/// More than the system grants after the close of a console or at a shutdown.
constexpr DWORD kLongestStop = 60000;

/// Stays set from the first event on. The system calls a plain function, therefore one for all.
HANDLE received() {
  static const HANDLE kEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  return kEvent;
}

std::atomic<bool> isStopping{false};

/// The receiver is never taken back: that would wait for an event that is just being handled.
class StopSignal final : public IStopSignal {
 public:
  StopSignal() {
    if (!received() || !::SetConsoleCtrlHandler(onConsoleEvent, TRUE)) throw lastSystemFailure();
  }

  void wait(const std::function<void()>&) override { ::WaitForSingleObject(received(), INFINITE); }
};

}  // namespace

void requestStop() { ::SetEvent(received()); }

int __stdcall onConsoleEvent(unsigned long event) {
  const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
  const bool endsTheProcess = event == CTRL_CLOSE_EVENT || event == CTRL_SHUTDOWN_EVENT;
  if (!isKey && !endsTheProcess) return FALSE;
  const bool isFirst = !isStopping.exchange(true);
  if (isKey && !isFirst) leaveProcess(kEndedByCtrlC);
  requestStop();
  if (endsTheProcess) ::Sleep(kLongestStop);
  return TRUE;
}

std::unique_ptr<IStopSignal> makeStopSignal() { return std::make_unique<StopSignal>(); }

std::string stopSignalNames() { return "Ctrl+C, Ctrl+Break, or the close of its console"; }

}  // namespace host
