#include "route_table.h"

#include <stdexcept>

#include "framework_messages.h"
#include "service_exceptions.h"
#include "text.h"

using ovra::common::HttpClientErrorException;
using ovra::data_transfer::ServiceObject;

namespace {

constexpr std::int32_t kNotFound = 404;
constexpr std::int32_t kMethodNotAllowed = 405;

/// A copy, so that a request works on a list of its own. An unknown method is not told apart from an unknown
/// path: it gets an empty list, and the guard stands for a look-up that refuses.
std::vector<Route> routesOf(RouteTable& table, std::int32_t method) {
  try {
    return table[method];
  } catch (const std::out_of_range&) {
    throw HttpClientErrorException(kMethodNotAllowed, wideToUtf8(kMsgMethodNotSupported));
  }
}

}  // namespace

ServiceObject routeRequest(RouteTable& table, std::int32_t method, const std::wstring& path,
                           const RequestParameters& parameters, const ServiceObject& body) {
  const std::vector<Route> routes = routesOf(table, method);
  for (const Route& route : routes) {
    // Compiled at each request: requests are rare, and nothing has to be kept in step with the table.
    const boost::wregex pattern(route.pattern);
    RouteMatch match;
    if (boost::regex_match(path, match, pattern)) return route.handler(match, parameters, body);
  }
  throw HttpClientErrorException(kNotFound, wideToUtf8(kMsgRequestNotSupported));
}
