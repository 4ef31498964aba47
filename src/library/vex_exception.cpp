#include "vex_exception.h"

#include "status_text.h"

VexException::VexException(VEX_STATUS failure) : std::runtime_error(statusToText(failure)), status(failure) {}

void raiseUnlessSuccess(VEX_STATUS status) {
  if (status != VEX_STATUS_SUCCESS) throw VexException(status);
}
