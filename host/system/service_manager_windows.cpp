#include "system/service_manager_windows.h"

#include <windows.h>

#include <mutex>
#include <stdexcept>

#include "system/event_log_windows.h"
#include "system/report.h"
#include "system/service_manager.h"
#include "system/stop_signal_windows.h"
#include "system_reason.h"

namespace host {

namespace {

/// For a large machine to be read, and a busy one to be left.
constexpr std::chrono::minutes kLongestStep{2};

/// The last word that the service control manager has; without a handle there is none to tell.
class Status {
 public:
  void join(SERVICE_STATUS_HANDLE handle) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_handle = handle;
    m_status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
  }

  void serve() { tell(SERVICE_RUNNING, {}); }

  void await(DWORD state, std::chrono::milliseconds time) { tell(state, time); }

  /// A failure after a stop was asked for is no failure to the manager, which would start the host anew.
  void end(int status) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool isFailure = status != 0 && m_status.dwCurrentState != SERVICE_STOP_PENDING;
    m_status.dwWin32ExitCode = isFailure ? ERROR_SERVICE_SPECIFIC_ERROR : NO_ERROR;
    m_status.dwServiceSpecificExitCode = isFailure ? static_cast<DWORD>(status) : 0;
    set(SERVICE_STOPPED, {});
  }

 private:
  void tell(DWORD state, std::chrono::milliseconds time) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    set(state, time);
  }

  /// A step under way has a number, which rises.
  void set(DWORD state, std::chrono::milliseconds time) {
    if (m_handle == nullptr) return;
    const bool isUnderWay = state == SERVICE_START_PENDING || state == SERVICE_STOP_PENDING;
    m_status.dwCurrentState = state;
    m_status.dwControlsAccepted =
        state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_PRESHUTDOWN : 0;
    m_status.dwCheckPoint = isUnderWay ? m_status.dwCheckPoint + 1 : 0;
    m_status.dwWaitHint = static_cast<DWORD>(time.count());
    ::SetServiceStatus(m_handle, &m_status);
  }

  std::mutex m_mutex;
  SERVICE_STATUS_HANDLE m_handle = nullptr;
  SERVICE_STATUS m_status{};
};

Status& status() {
  static Status status;
  return status;
}

/// What runs as the service: the manager calls a plain function.
struct Running {
  const std::function<int()>* body = nullptr;
  int result = 1;
};

Running& running() {
  static Running running;
  return running;
}

void toEventLog(LineKind kind, const std::string& line) {
  writeEvent(kind == LineKind::kReport ? EventKind::kError : EventKind::kInformation, line);
}

DWORD WINAPI onControl(DWORD control, DWORD, void*, void*) { return onServiceControl(control); }

void WINAPI serviceMain(DWORD, wchar_t**) {
  status().join(::RegisterServiceCtrlHandlerExW(kServiceName, onControl, nullptr));
  status().await(SERVICE_START_PENDING, kLongestStep);
  const int result = (*running().body)();
  running().result = result;
  if (result == 0) {
    announce("The host has stopped");
  } else {
    report("the host has ended with status " + std::to_string(result));
  }
  status().end(result);
}

}  // namespace

int runAsService(const std::function<int()>& body) {
  running().body = &body;
  tellLinesTo(toEventLog);
  std::wstring name = kServiceName;
  const SERVICE_TABLE_ENTRYW services[] = {{name.data(), serviceMain}, {nullptr, nullptr}};
  const bool isService = ::StartServiceCtrlDispatcherW(services) != FALSE;
  const std::runtime_error reason = lastSystemFailure();
  tellLinesTo(nullptr);
  if (!isService) {
    throw std::runtime_error(std::string("the service control manager did not start this process: ") +
                             reason.what());
  }
  return running().result;
}

unsigned long onServiceControl(unsigned long control) {
  switch (control) {
    case SERVICE_CONTROL_STOP:
    case SERVICE_CONTROL_PRESHUTDOWN:
      status().await(SERVICE_STOP_PENDING, kLongestStep);
      requestStop();
      return NO_ERROR;
    case SERVICE_CONTROL_INTERROGATE:
      return NO_ERROR;
    default:
      return ERROR_CALL_NOT_IMPLEMENTED;
  }
}

void tellReady(const std::string&) { status().serve(); }

void tellReloading() {}

void tellStopping(std::chrono::milliseconds time) { status().await(SERVICE_STOP_PENDING, time); }

void tellLeaving(int result) { status().end(result); }

std::chrono::microseconds beatInterval() { return {}; }

void tellAlive() {}

}  // namespace host
