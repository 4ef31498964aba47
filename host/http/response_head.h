#ifndef MIRN_HOST_HTTP_RESPONSE_HEAD_H
#define MIRN_HOST_HTTP_RESPONSE_HEAD_H

#include <string>

#include "answers/answer.h"

namespace host {

/// The status line and the header of `answer`, with the empty line that ends them; the length is that of its
/// body, which is in chunks where it comes in parts. `version` is 10 or 11, as the client speaks it; 10 knows
/// no chunks.
std::string responseHead(const Answer& answer, unsigned version, bool keepsConnection);

}  // namespace host

#endif
