#ifndef MIRN_TESTS_SUPPORT_ACTION_CASES_H
#define MIRN_TESTS_SUPPORT_ACTION_CASES_H

#include <functional>
#include <string>
#include <vector>

#include "mirn_session.h"

/// One operation of the session that changes something.
struct ActionCase {
  const char* name;
  std::function<void(SessionActions&)> run;
  std::string call;  ///< What the library is called with.
  VEX_STATUS mappedStatus = VEX_STATUS_SUCCESS;
  const char* mappedErrorId = "";  ///< Raised for that status in place of its own id.

  /// The name of the library's operation.
  std::string operation() const { return call.substr(0, call.find('(')); }
};

/// All of them, in the order of the interfaces and their operations.
std::vector<ActionCase> actionCases();

/// Bytes of a record, as the text of a recorded call shows them.
std::string u32(std::uint32_t value);
std::string u64(std::uint64_t value);
std::string zeros(std::size_t count);
/// A text in a field of `size` bytes.
std::string fieldBytes(const std::string& text, std::size_t size);

#endif
