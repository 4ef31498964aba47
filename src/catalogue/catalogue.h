#ifndef MIRN_CATALOGUE_CATALOGUE_H
#define MIRN_CATALOGUE_CATALOGUE_H

#include <array>
#include <string>

#include "route_row.h"

/// All that the plug-in can be asked, told once. Made at the first use and constant afterwards. Safe from
/// any thread.

/// The row of a route.
const RouteRow& rowOf(RouteId route);

/// All rows, by their number.
using Catalogue = std::array<const RouteRow*, kRouteCount>;
const Catalogue& catalogue();

/// What the router matches with the path behind the branch: the row's path with a group for each name in it.
const std::wstring& patternOf(const RouteRow& row);

/// The path key of the row's listener: "mirn/volumes".
std::wstring keyOf(const RouteRow& row);

/// The whole path as documents write it: "mirn/volumes/{volumeId}/rebuild".
std::wstring templateOf(const RouteRow& row);

/// The names in the row's path, in their order: "volumeId".
std::vector<std::wstring> pathArgumentsOf(const RouteRow& row);

/// What refusals all routes have.
const RefusalRows& refusalsOfAllRoutes();

#endif
