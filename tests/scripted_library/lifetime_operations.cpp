#include "scripted_library/operations_support.h"

VEX_STATUS VexInitialize() { return act(__func__); }

VEX_STATUS VexFinalize() { return act(__func__); }

VEX_STATUS VexSessionOpen(VEX_HANDLE* session) {
  const auto answer = [session](ScriptedMachine&) {
    if (session == nullptr) return VEX_STATUS_INVALID_PARAMETER;
    return store(ScriptedLibrary::instance().openSession(), session);
  };
  return respond(__func__, answer, Out{session, 0});
}

VEX_STATUS VexSessionClose(VEX_HANDLE session) {
  const auto answer = [session](ScriptedMachine&) {
    const bool closed = ScriptedLibrary::instance().closeSession(session);
    return closed ? VEX_STATUS_SUCCESS : VEX_STATUS_INVALID_SESSION;
  };
  return respond(__func__, answer, session);
}

VEX_STATUS VexRescan() { return act(__func__); }
