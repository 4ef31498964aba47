#include "system/service_control_windows.h"

#include <chrono>
#include <stdexcept>
#include <thread>

#include "system/service_manager_windows.h"
#include "system_reason.h"
#include "text.h"

namespace host {

namespace {

using std::chrono::milliseconds;

constexpr wchar_t kDisplayName[] = L"Mirn host";
constexpr wchar_t kDescription[] = L"Serves the storage plug-in of this machine over HTTP.";

/// How long a stop may take, at the request of a user and at the machine's shutdown.
constexpr milliseconds kLongestStop = std::chrono::minutes(2);
constexpr milliseconds kLook{100};

constexpr DWORD kSecondsOfADay = 24 * 60 * 60;

std::string quotedName() { return '"' + wideToUtf8(kServiceName) + '"'; }

std::runtime_error failure(const std::string& what) {
  return std::runtime_error(what + ": " + lastSystemFailure().what());
}

std::runtime_error whyNotAdded() {
  switch (::GetLastError()) {
    case ERROR_SERVICE_EXISTS:
      return std::runtime_error("there is a service " + quotedName() + " already; remove it first");
    case ERROR_SERVICE_MARKED_FOR_DELETE:
      return std::runtime_error("the service " + quotedName() +
                                " is still about to go: close what shows services, and try again");
    default:
      return failure("the service " + quotedName() + " cannot be added");
  }
}

std::runtime_error whyNotDescribed() {
  return failure("the service " + quotedName() + " cannot be described");
}

void describe(const ServiceHandle& service, DWORD level, void* facts) {
  if (!::ChangeServiceConfig2W(service.get(), level, facts)) throw whyNotDescribed();
}

/// Whether it ended by a crash or with a status: after 5 s, half a minute, then each minute.
void restartOnFailure(const ServiceHandle& service) {
  SC_ACTION actions[] = {{SC_ACTION_RESTART, 5000}, {SC_ACTION_RESTART, 30000}, {SC_ACTION_RESTART, 60000}};
  SERVICE_FAILURE_ACTIONSW failures{};
  failures.dwResetPeriod = kSecondsOfADay;
  failures.cActions = static_cast<DWORD>(std::size(actions));
  failures.lpsaActions = actions;
  describe(service, SERVICE_CONFIG_FAILURE_ACTIONS, &failures);
  // Where that cannot be said, crashes alone count.
  SERVICE_FAILURE_ACTIONS_FLAG alsoWithAStatus{TRUE};
  if (!::ChangeServiceConfig2W(service.get(), SERVICE_CONFIG_FAILURE_ACTIONS_FLAG, &alsoWithAStatus) &&
      ::GetLastError() != ERROR_INVALID_LEVEL) {
    throw whyNotDescribed();
  }
}

void describe(const ServiceHandle& service) {
  std::wstring text = kDescription;
  SERVICE_DESCRIPTIONW description{text.data()};
  describe(service, SERVICE_CONFIG_DESCRIPTION, &description);
  SERVICE_PRESHUTDOWN_INFO shutdown{static_cast<DWORD>(kLongestStop.count())};
  describe(service, SERVICE_CONFIG_PRESHUTDOWN_INFO, &shutdown);
  restartOnFailure(service);
}

DWORD stateOf(const ServiceHandle& service) {
  SERVICE_STATUS status{};
  if (!::QueryServiceStatus(service.get(), &status)) throw failure("the service tells no state");
  return status.dwCurrentState;
}

void askToStop(const ServiceHandle& service) {
  SERVICE_STATUS status{};
  if (::ControlService(service.get(), SERVICE_CONTROL_STOP, &status)) return;
  const DWORD error = ::GetLastError();
  const bool isOnItsWay = error == ERROR_SERVICE_NOT_ACTIVE || error == ERROR_SERVICE_CANNOT_ACCEPT_CTRL;
  if (!isOnItsWay) throw failure("the service " + quotedName() + " takes no stop");
}

/// One that starts or stops already takes no control meanwhile.
void stop(const ServiceHandle& service) {
  const auto deadline = std::chrono::steady_clock::now() + kLongestStop;
  for (DWORD state = stateOf(service); state != SERVICE_STOPPED; state = stateOf(service)) {
    if (state == SERVICE_RUNNING) askToStop(service);
    if (std::chrono::steady_clock::now() > deadline) {
      throw std::runtime_error("the service " + quotedName() + " does not stop");
    }
    std::this_thread::sleep_for(kLook);
  }
}

}  // namespace

ServiceList::ServiceList()
    : m_list(::OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT | SC_MANAGER_CREATE_SERVICE)) {
  if (!m_list) throw failure("the services cannot be changed; an administrator may");
}

void ServiceList::requireNone() const {
  const ServiceHandle found(::OpenServiceW(m_list.get(), kServiceName, SERVICE_QUERY_STATUS));
  if (found) ::SetLastError(ERROR_SERVICE_EXISTS);
  if (::GetLastError() != ERROR_SERVICE_DOES_NOT_EXIST) throw whyNotAdded();
}

void ServiceList::add(const std::wstring& commandLine) const {
  const ServiceHandle service(::CreateServiceW(
      m_list.get(), kServiceName, kDisplayName, SERVICE_CHANGE_CONFIG | SERVICE_START | DELETE,
      SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START, SERVICE_ERROR_NORMAL, commandLine.c_str(), nullptr,
      nullptr, nullptr, nullptr, nullptr));
  if (!service) throw whyNotAdded();
  try {
    describe(service);
  } catch (...) {
    ::DeleteService(service.get());
    throw;
  }
}

void ServiceList::remove() const {
  const ServiceHandle service(
      ::OpenServiceW(m_list.get(), kServiceName, SERVICE_QUERY_STATUS | SERVICE_STOP | DELETE));
  if (!service) {
    if (::GetLastError() != ERROR_SERVICE_DOES_NOT_EXIST) {
      throw failure("the service " + quotedName() + " cannot be removed");
    }
    throw std::runtime_error("there is no service " + quotedName());
  }
  stop(service);
  if (!::DeleteService(service.get())) throw failure("the service " + quotedName() + " cannot be removed");
}

}  // namespace host
