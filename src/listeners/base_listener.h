#ifndef MIRN_LISTENERS_BASE_LISTENER_H
#define MIRN_LISTENERS_BASE_LISTENER_H

#include <vector>

#include "listener_interface.h"
#include "route_id.h"
#include "route_table.h"

/// Finds the handler of a request in a table of routes. A concrete listener does nothing but bind a handler
/// to each row of its branch in its constructor; where two patterns match, the one added first wins.
class BaseListener : public IListener {
 public:
  ovra::data_transfer::ServiceObject handleRequest(std::int32_t method, std::vector<std::wstring> segments,
                                                   std::map<std::wstring, std::wstring> parameters,
                                                   ovra::data_transfer::ServiceObject body) override;

  /// All routes, for whoever wants to walk them.
  const RouteTable& routes() const { return m_routes; }
  /// Those of the catalogue among them, in order of registration.
  const std::vector<RouteId>& boundRoutes() const { return m_bound; }

 protected:
  /// Leaves an empty entry for each method of http_method.h, so that no request with one of them writes the
  /// table while another reads it.
  BaseListener();

  /// Adds a route of the catalogue: its row gives method and pattern, and judges each request before the
  /// handler sees it.
  void addRoute(RouteId route, RouteHandler handler);

  /// `pattern` is relative to the listener's path key and has no leading slash.
  void addRoute(std::int32_t method, std::wstring pattern, RouteHandler handler);

 private:
  RouteTable m_routes;
  std::vector<RouteId> m_bound;
};

#endif
