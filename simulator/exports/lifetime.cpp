#include "core/library.h"
#include "rules/rules.h"
#include "VEXL2.h"

using simulator::Library;

VEX_STATUS VexInitialize() { return Library::instance().initialize(__func__); }

VEX_STATUS VexFinalize() { return Library::instance().finalize(__func__); }

VEX_STATUS VexSessionOpen(VEX_HANDLE* session) { return Library::instance().openSession(__func__, session); }

VEX_STATUS VexSessionClose(VEX_HANDLE session) { return Library::instance().closeSession(__func__, session); }

VEX_STATUS VexRescan() { return Library::instance().change(__func__, simulator::rescan); }
