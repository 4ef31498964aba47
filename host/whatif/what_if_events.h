#ifndef MIRN_HOST_WHATIF_WHAT_IF_EVENTS_H
#define MIRN_HOST_WHATIF_WHAT_IF_EVENTS_H

#include <boost/json/array.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace host {

constexpr std::size_t kMostWhatIfEvents = 64;
constexpr std::uint64_t kLongestWaitSeconds = std::uint64_t{10} * 366 * 24 * 3600;

/// Whether there is a disk with this id.
using DiskLookUp = std::function<bool(const std::wstring& id)>;

/// The events in a request's body, one thing each: "fail" or "pull" with the id of a disk, or "wait" with
/// seconds. Raises a `Refusal`: 400 for a body of another form, 404 for a disk that there is not.
boost::json::array whatIfEventsIn(const std::string& body, const DiskLookUp& isDisk);

}  // namespace host

#endif
