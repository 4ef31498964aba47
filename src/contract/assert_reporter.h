#ifndef MIRN_CONTRACT_ASSERT_REPORTER_H
#define MIRN_CONTRACT_ASSERT_REPORTER_H

/// Reports a failed assertion the way the platform's own `assert` does, with exactly this text and path, and
/// ends the process.
[[noreturn]] void reportFailedAssertion(const char* text, const char* path, unsigned line);

/// Stops the process with `text`, `path` and `line` when `condition` is false. Vanishes under NDEBUG.
#ifdef NDEBUG
#define MIRN_ASSERT_AT(condition, text, path, line) static_cast<void>(0)
#else
#define MIRN_ASSERT_AT(condition, text, path, line) \
  ((condition) ? static_cast<void>(0) : reportFailedAssertion(text, path, line))
#endif

#endif
