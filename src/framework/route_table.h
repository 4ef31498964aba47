#ifndef MIRN_FRAMEWORK_ROUTE_TABLE_H
#define MIRN_FRAMEWORK_ROUTE_TABLE_H

#include <boost/regex.hpp>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ServiceObject.h"

/// The sub-matches of a route's pattern: 0 is the whole path, 1 the first capture group. They point into a
/// text that lives as long as the handler's call.
using RouteMatch = boost::match_results<std::wstring::const_iterator>;

/// The query parameters of a request.
using RequestParameters = std::map<std::wstring, std::wstring>;

/// Answers one request; owns its copy of the body. A refusal is an exception.
using RouteHandler = std::function<ovra::data_transfer::ServiceObject(
    const RouteMatch&, const RequestParameters&, ovra::data_transfer::ServiceObject)>;

struct Route {
  std::wstring pattern;  ///< Perl syntax; must match the whole path. Has no leading slash.
  RouteHandler handler;
};

/// The routes of each method code, in order of registration.
using RouteTable = std::map<std::int32_t, std::vector<Route>>;

/// Hands the request to the first route of `method` that matches `path` and returns its value. Raises
/// `HttpClientErrorException` with status 404 when there is none, a method without routes included.
/// Exceptions of the handler pass through unchanged.
///
/// A method code that `table` has not seen leaves an empty entry there: concurrent requests are safe only
/// with methods that have an entry.
ovra::data_transfer::ServiceObject routeRequest(RouteTable& table, std::int32_t method,
                                                const std::wstring& path, const RequestParameters& parameters,
                                                const ovra::data_transfer::ServiceObject& body);

#endif
