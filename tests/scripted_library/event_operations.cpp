#include "scripted_library/operations_support.h"

namespace {

constexpr VEX_HANDLE kSubscription = 900;

}  // namespace

VEX_STATUS VexGetEventHandle(VEX_HANDLE* event) {
  return respond(
      __func__, [event](ScriptedMachine&) { return store(kSubscription, event); }, Out{event, 0});
}

VEX_STATUS VexEventWait(uint32_t timeoutMs, VEX_HANDLE event) {
  return ScriptedLibrary::instance().performWait(__func__, [=] { return describeAll(timeoutMs, event); });
}

VEX_STATUS VexFreeEventHandle(VEX_HANDLE event) { return act(__func__, event); }
