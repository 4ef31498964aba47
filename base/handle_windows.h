#ifndef MIRN_BASE_HANDLE_WINDOWS_H
#define MIRN_BASE_HANDLE_WINDOWS_H

#include <windows.h>

#include <memory>
#include <type_traits>

struct HandleClosing {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};

/// A handle of the system that is closed in the end; never INVALID_HANDLE_VALUE.
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleClosing>;

#endif
