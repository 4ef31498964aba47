#ifndef MIRN_HOST_HTTP_DATE_H
#define MIRN_HOST_HTTP_DATE_H

#include <chrono>
#include <string>

namespace host {

/// As a header field tells a time: "Sun, 06 Nov 1994 08:49:37 GMT".
std::string httpDate(std::chrono::system_clock::time_point time);

/// Of now. The text is the thread's, until the next call; it is made once a second.
const std::string& httpDateNow();

}  // namespace host

#endif
