#ifndef MIRN_SESSION_PREPARED_CALL_H
#define MIRN_SESSION_PREPARED_CALL_H

#include <boost/optional.hpp>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "VEXL2.h"

/// One call of the library that changes the machine, as a value: judged and made ready, and not yet made.
/// Owns all that it hands over.
struct PreparedCall {
  std::string operation;                 ///< The name of the library's function.
  std::vector<std::uint64_t> arguments;  ///< Handles and plain numbers, in the order of the call.
  boost::optional<std::string> record;  ///< The bytes of the record or text that goes along, pointers zeroed.
  std::vector<VEX_HANDLE> handles;      ///< Those that only a pointer leads to.

  /// Makes the call; once.
  std::function<VEX_STATUS()> make;

  /// Raised for this status in place of its own id.
  VEX_STATUS mappedStatus = VEX_STATUS_SUCCESS;
  const char* mappedErrorId = "";
};

#endif
