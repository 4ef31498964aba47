#ifndef MIRN_HOST_HTTP_REQUEST_RULES_H
#define MIRN_HOST_HTTP_REQUEST_RULES_H

#include <boost/beast/http/fields.hpp>
#include <boost/beast/http/message.hpp>

#include "http/host_names.h"
#include "http/request.h"

namespace host {

/// Judges a header's fields as a whole, where a reader that takes each for itself lets pass what several
/// readers understand differently, and tells what the host goes by. Whether it has a body is not told.
///
/// Raises a `Refusal`: 400 for fields that contradict each other, are repeated or say nothing, 415 for an
/// encoded body, 417 for an expectation that the host does not know, 421 for a request to somebody else.
Request judgedRequest(const boost::beast::http::request_header<>& header, const HostNames& names,
                      const Destination& destination);

}  // namespace host

#endif
