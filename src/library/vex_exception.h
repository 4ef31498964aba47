#ifndef MIRN_LIBRARY_VEX_EXCEPTION_H
#define MIRN_LIBRARY_VEX_EXCEPTION_H

#include <stdexcept>

#include "VEXL2.h"

/// A read from the library failed. `what()` is the status text of `status`, and nothing else.
class VexException : public std::runtime_error {
 public:
  explicit VexException(VEX_STATUS failure);

  VEX_STATUS status;
};

/// Raises `VexException` for every status but 0.
void raiseUnlessSuccess(VEX_STATUS status);

#endif
