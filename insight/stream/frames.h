#ifndef MIRN_INSIGHT_STREAM_FRAMES_H
#define MIRN_INSIGHT_STREAM_FRAMES_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <string>

#include "history/entry.h"
#include "stream/stream_id.h"

/// Server-sent events, as bytes.
namespace insight::frames {

std::string ofEntry(const std::string& epoch, const Entry& entry);
/// Entries from one number to another that the listener does not get; its own id stands at the last of them.
std::string ofGap(const std::string& epoch, std::int64_t first, std::int64_t last);
/// Where the plug-in stands.
std::string ofRevision(const boost::json::object& position);
std::string ofHeartbeat();
/// The host stops: come back soon.
std::string ofEnd();

}  // namespace insight::frames

#endif
