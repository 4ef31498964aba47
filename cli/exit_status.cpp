#include "exit_status.h"

namespace mirnctl {

ExitStatus exitStatusOf(unsigned httpStatus) {
  switch (httpStatus) {
    case 401:
    case 403:
      return ExitStatus::kUnauthorised;
    case 404:
    case 405:
      return ExitStatus::kNotFound;
    case 409:
    case 412:
      return ExitStatus::kConflict;
    case 502:
    case 503:
    case 504:
      return ExitStatus::kUnreachable;
    default:
      return httpStatus >= 500 ? ExitStatus::kInternal : ExitStatus::kRefused;
  }
}

}  // namespace mirnctl
