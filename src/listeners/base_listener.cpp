#include "base_listener.h"

#include <utility>

#include "catalogue.h"
#include "http_method.h"
#include "requests.h"
#include "text.h"

BaseListener::BaseListener()
    : m_routes{{HttpMethod::kGet, {}},
               {HttpMethod::kPost, {}},
               {HttpMethod::kPut, {}},
               {HttpMethod::kDelete, {}}} {}

void BaseListener::addRoute(RouteId route, RouteHandler handler) {
  const RouteRow& row = rowOf(route);
  m_bound.push_back(route);
  addRoute(row.method, patternOf(row),
           [&row, handler = std::move(handler)](const RouteMatch& match, const RequestParameters& parameters,
                                                ServiceObject body) {
             judge(row, parameters, body);
             return handler(match, parameters, std::move(body));
           });
}

void BaseListener::addRoute(std::int32_t method, std::wstring pattern, RouteHandler handler) {
  m_routes[method].push_back({std::move(pattern), std::move(handler)});
}

ovra::data_transfer::ServiceObject BaseListener::handleRequest(
    std::int32_t method, std::vector<std::wstring> segments, std::map<std::wstring, std::wstring> parameters,
    ovra::data_transfer::ServiceObject body) {
  return routeRequest(m_routes, method, joined(segments, L"/"), parameters, body);
}
