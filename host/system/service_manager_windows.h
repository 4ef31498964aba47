#ifndef MIRN_HOST_SYSTEM_SERVICE_MANAGER_WINDOWS_H
#define MIRN_HOST_SYSTEM_SERVICE_MANAGER_WINDOWS_H

#include <functional>

namespace host {

/// Under this name the service control manager knows the host.
constexpr wchar_t kServiceName[] = L"mirn-host";

/// Runs `body`, whose result is an exit status and which raises nothing, as the service that the service
/// control manager has started this process for, and gives its result. The lines of report.h go into the
/// event log meanwhile. Raises `std::runtime_error` when the manager did not start it.
int runAsService(const std::function<int()>& body);

/// What the manager calls with one of its controls; nonzero when the host does not know it.
unsigned long onServiceControl(unsigned long control);

}  // namespace host

#endif
