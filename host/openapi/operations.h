#ifndef MIRN_HOST_OPENAPI_OPERATIONS_H
#define MIRN_HOST_OPENAPI_OPERATIONS_H

#include <boost/json/object.hpp>

#include "api/endpoint.h"

namespace host {

/// One operation as OpenAPI tells it, from `endpoint` and
/// - what the host tells of an operation of its own,
/// - `route`, what a plug-in's `description` tells of it,
/// - or, where nobody tells anything, from the path alone.
///
/// `example` is one request and its answer, as recorded: `body`, `status` and `answer`; any may be missing.
boost::json::object ownOperation(const ApiEndpoint& endpoint, const boost::json::object& example);
boost::json::object describedOperation(const ApiEndpoint& endpoint, const boost::json::object& route,
                                       const boost::json::object& description,
                                       const boost::json::object& example);
boost::json::object undescribedOperation(const ApiEndpoint& endpoint);

/// The parameters that all operations of a plug-in share, by their names among a document's components.
boost::json::object sharedParameters();

/// The name of the parameter that stands for the rest of a path, which OpenAPI has no word for.
constexpr char kRestParameter[] = "rest";

}  // namespace host

#endif
