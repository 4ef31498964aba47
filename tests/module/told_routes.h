#ifndef MIRN_TESTS_MODULE_TOLD_ROUTES_H
#define MIRN_TESTS_MODULE_TOLD_ROUTES_H

#include "module/request.h"
#include "ServiceObject.h"

/// The form of the route that a request takes, of those that a plug-in tells; null where it takes none.
/// `description` is what `describe` answers, and owns the form.
const ovra::data_transfer::ServiceObject* toldRouteOf(const ovra::data_transfer::ServiceObject& description,
                                                      const Request& request);

/// The parts of a route's template behind its key: "{volumeId}", "rebuild".
Segments partsBehindKey(const ovra::data_transfer::ServiceObject& route);

#endif
