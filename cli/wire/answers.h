#ifndef MIRN_CLI_WIRE_ANSWERS_H
#define MIRN_CLI_WIRE_ANSWERS_H

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>
#include <string>

#include "document/operation.h"
#include "wire/client.h"

namespace mirnctl {

/// The body of a successful answer, null where there is none. Raises `Failure` with what the service says
/// of a failed one.
boost::json::value answerOf(const Reply& reply);

/// What a GET of this target answers.
boost::json::value get(IService& service, const std::string& target);

/// All records of a list, page by page.
boost::json::array allRecords(IService& service, const Operation& operation);

}  // namespace mirnctl

#endif
