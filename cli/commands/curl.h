#ifndef MIRN_CLI_COMMANDS_CURL_H
#define MIRN_CLI_COMMANDS_CURL_H

#include <string>

#include "destination/destination.h"
#include "wire/message.h"

namespace mirnctl {

/// A command for a shell that sends the same request. The token stands in it as $TOKEN.
std::string curlOf(const Request& request, const Destination& destination);

}  // namespace mirnctl

#endif
