#ifndef MIRN_HOST_OPENAPI_OPENAPI_DOCUMENT_H
#define MIRN_HOST_OPENAPI_OPENAPI_DOCUMENT_H

#include <boost/json/object.hpp>
#include <string>

#include "api/endpoint_table.h"

namespace host {

/// Whose document it is.
struct DocumentedService {
  std::string name;
  std::string version;
  boost::json::object description{};  ///< What the plug-in tells of itself; empty when it does not.
  boost::json::object examples{};     ///< Recorded exchanges by operation, see operations.h.
};

/// Everything in `table` as an OpenAPI 3.1 document, the same for the same table and service.
boost::json::object openApiDocument(const EndpointTable& table, const DocumentedService& service);

}  // namespace host

#endif
