#ifndef MIRN_HOST_PLATFORM_OPTIONS_H
#define MIRN_HOST_PLATFORM_OPTIONS_H

#include <boost/program_options/options_description.hpp>
#include <string>

#include "options.h"

namespace host {

/// The options that not every system has; one source a system.
void addPlatformOptions(boost::program_options::options_description& description, Options& options);

/// Why this system does not have `option`, such as ": there is no TLS on Windows"; empty for one that no
/// system has.
std::string whyMissing(const std::string& option);

}  // namespace host

#endif
