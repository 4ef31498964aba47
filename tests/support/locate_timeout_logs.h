#ifndef MIRN_TESTS_SUPPORT_LOCATE_TIMEOUT_LOGS_H
#define MIRN_TESTS_SUPPORT_LOCATE_TIMEOUT_LOGS_H

/// What a session logs of a stored locate time-out that it cannot have, or does not take.
constexpr char kUnreadable[] = "Warning: Could not read Mirn Plugin configuration to permission denied";
constexpr char kOutOfRange[] =
    "Warning: Timeout value exceeds legal values in the configuration and will be set to default";

#endif
