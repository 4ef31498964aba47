#ifndef MIRN_HOST_WHATIF_WHAT_IF_SCHEMAS_H
#define MIRN_HOST_WHATIF_WHAT_IF_SCHEMAS_H

#include <string>

/// JSON Schemas as JSON text.

namespace host {

/// Of the body.
std::string whatIfEventsSchema();
/// Of the answer.
std::string whatIfSchema();

}  // namespace host

#endif
