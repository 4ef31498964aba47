#ifndef MIRN_CATALOGUE_BRANCHES_H
#define MIRN_CATALOGUE_BRANCHES_H

#include "route_row.h"

/// The rows of the routes, a function and a file for each branch of the path tree. Within a method the order
/// is the one in which the router tries them.

RouteRows serviceRows();
RouteRows raidRows();
RouteRows controllerRows();
RouteRows deviceRows();
RouteRows portRows();
RouteRows arrayRows();
RouteRows volumeRows();
RouteRows diskRows();
RouteRows eventRows();

#endif
