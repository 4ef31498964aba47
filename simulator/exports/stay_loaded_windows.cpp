#include <windows.h>

namespace {

/// Never unloaded: its one Library outlives its users, since a thread may still wait in it. Done as soon as
/// the library is there; elsewhere the linker says so.
const bool kStays = [] {
  constexpr DWORD kHow = GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS;
  HMODULE self = nullptr;
  return ::GetModuleHandleExW(kHow, reinterpret_cast<const wchar_t*>(&kStays), &self) != FALSE;
}();

}  // namespace
