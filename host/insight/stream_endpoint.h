#ifndef MIRN_HOST_INSIGHT_STREAM_ENDPOINT_H
#define MIRN_HOST_INSIGHT_STREAM_ENDPOINT_H

#include <cstddef>
#include <memory>

#include "api/endpoint_table.h"
#include "plugin_interface.h"
#include "stream/stream.h"

namespace host {

/// What happens, as it happens, under "events/stream", for at most so many who listen at once.
void addStreamEndpoint(EndpointTable& table, const ovra::plugin_interface& plugin,
                       std::shared_ptr<insight::Stream> stream, std::size_t mostListeners);

}  // namespace host

#endif
