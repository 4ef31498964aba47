#ifndef MIRN_TESTS_LISTENERS_SEEN_REFUSALS_H
#define MIRN_TESTS_LISTENERS_SEEN_REFUSALS_H

#include <set>
#include <string>
#include <tuple>

#include "base_listener.h"
#include "listeners/listener_requests.h"
#include "route_row.h"

/// Holds the refusals that tests see against the rows of their routes.

/// A route, and an error id with its words.
using SeenRefusal = std::tuple<RouteId, std::string, std::string>;

/// All that this program has seen so far.
std::set<SeenRefusal>& seenRefusals();

/// The row has a refusal with these words.
bool isInRow(const RouteRow& row, const std::string& errorId, const std::string& words);

/// Remembers a refusal of the listener. One that a listener makes itself must stand in the row of the route.
void noteRefusal(const IListener& listener, const Request& request, const std::exception& refusal);

#endif
