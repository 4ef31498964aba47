#ifndef MIRN_SIMULATOR_TWIN_CONTROLLER_ORDER_H
#define MIRN_SIMULATOR_TWIN_CONTROLLER_ORDER_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

namespace simulator {

/// The controllers in the order of their handles, as far as that is known: the list of all has them by type
/// first, and only those of one type in that order, and so has the list of each engine its own. `ofEngines`
/// are those lists by the engine's id, as published.
boost::json::array inOrderOfHandles(const boost::json::array& controllers,
                                    const boost::json::object& ofEngines);

}  // namespace simulator

#endif
