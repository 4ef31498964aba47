#ifndef MIRN_TESTS_PLUGIN_START_PATIENCE_H
#define MIRN_TESTS_PLUGIN_START_PATIENCE_H

#include <cstdint>
#include <optional>

/// How many seconds a start waits for the lock of its first snapshot; what the session says, when empty.
extern std::optional<std::int64_t> startPatience;

#endif
