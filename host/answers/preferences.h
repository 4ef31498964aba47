#ifndef MIRN_HOST_ANSWERS_PREFERENCES_H
#define MIRN_HOST_ANSWERS_PREFERENCES_H

#include <chrono>
#include <optional>
#include <string>

namespace host {

constexpr std::chrono::seconds kLongestWait{60};

/// How long a client that sends this Prefer (RFC 7240) is glad to wait, `kLongestWait` at most. The first of
/// several waits counts. Nothing where it wants none, or says it in no way that can be understood.
std::optional<std::chrono::seconds> waitIn(const std::optional<std::string>& prefer);

}  // namespace host

#endif
