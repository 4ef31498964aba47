#ifndef MIRN_HOST_SYSTEM_SERVICE_CONTROL_WINDOWS_H
#define MIRN_HOST_SYSTEM_SERVICE_CONTROL_WINDOWS_H

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>

namespace host {

struct ServiceHandleClosing {
  void operator()(SC_HANDLE handle) const { ::CloseServiceHandle(handle); }
};
using ServiceHandle = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, ServiceHandleClosing>;

/// The machine's list of services, as far as the host's own is concerned. All raise `std::runtime_error` with
/// the system's reason.
class ServiceList {
 public:
  /// For somebody who may change it.
  ServiceList();

  /// Raises `std::runtime_error` when the host's service is there.
  void requireNone() const;

  /// Starts with the machine and anew after a failure, for the system's own account; does not run yet.
  void add(const std::wstring& commandLine) const;

  /// Stops it first.
  void remove() const;

 private:
  ServiceHandle m_list;
};

}  // namespace host

#endif
