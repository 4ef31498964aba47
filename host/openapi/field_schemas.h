#ifndef MIRN_HOST_OPENAPI_FIELD_SCHEMAS_H
#define MIRN_HOST_OPENAPI_FIELD_SCHEMAS_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <string>

namespace host {

/// The schema of an answer as a plug-in describes it, in the keywords that OpenAPI knows; what they do not
/// tell stands under "x-mirn".
boost::json::object answerSchema(const boost::json::object& described);

/// The schema of a body, of the fields that a plug-in describes.
boost::json::object bodySchema(const boost::json::array& fields);

/// A parameter as OpenAPI writes it; `place` is "path", "query" or "header".
boost::json::object parameterOf(const std::string& name, const char* place, bool isRequired,
                                std::string description, boost::json::object schema);

/// The parameters of a path and of a query, as a plug-in describes them.
boost::json::array parametersOf(const boost::json::array& arguments, const boost::json::array& query);

}  // namespace host

#endif
