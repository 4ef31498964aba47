#ifndef MIRN_TESTS_MODULE_RECORDED_LIVES_H
#define MIRN_TESTS_MODULE_RECORDED_LIVES_H

#include "module/call_record.h"
#include "support/loaded_module.h"

/// Parts of the record of all calls. Each begins with a fresh library and leaves no thread in it.

/// From start to end and once more, over a machine that changes and one with nothing in it.
void recordLives(CallRecord& record, const LoadedModule& module);

/// Each request that acts, with what it does to the machine.
void recordActions(CallRecord& record, const LoadedModule& module);

/// Requests of every shape.
void recordVariations(CallRecord& record, const LoadedModule& module);

/// What becomes of the calls when the library refuses one.
void recordRefusals(CallRecord& record, const LoadedModule& module);

/// What no route reaches: the session's other actions, and texts that no route lets through.
void recordSession(CallRecord& record);

#endif
