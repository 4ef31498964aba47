#ifndef MIRN_HOST_BUNDLE_BUNDLED_CONFIGURATION_H
#define MIRN_HOST_BUNDLE_BUNDLED_CONFIGURATION_H

#include <boost/json/object.hpp>

#include "options.h"

namespace host {

/// What a bundle tells of the configuration, by the names of options: numbers and switches that are named
/// one by one, so that a new option is not told before somebody has thought about it. Never a text, which may
/// hold a path, an address or a secret.
boost::json::object bundledConfiguration(const Options& options);

}  // namespace host

#endif
