#include "stream/frames.h"

#include <boost/json/serialize.hpp>

namespace insight::frames {

namespace {

/// JSON has no line breaks of its own, so that its bytes are one line.
std::string event(const std::string& name, const boost::json::object& data) {
  return "event: " + name + "\ndata: " + boost::json::serialize(data) + "\n\n";
}

}  // namespace

std::string ofEntry(const std::string& epoch, const Entry& entry) {
  return "id: " + StreamId{epoch, entry.row}.text() + '\n' + event(entry.kind, formOf(entry));
}

std::string ofGap(const std::string& epoch, std::int64_t first, std::int64_t last) {
  return "id: " + StreamId{epoch, last}.text() + '\n' + event("gap", {{"first", first}, {"last", last}});
}

std::string ofRevision(const boost::json::object& position) { return event("revision", position); }

std::string ofHeartbeat() { return event("heartbeat", {}); }

std::string ofEnd() { return "retry: 1000\n" + event("bye", {}); }

}  // namespace insight::frames
