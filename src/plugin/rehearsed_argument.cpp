#include "rehearsed_argument.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>

#include "catalogue.h"
#include "service_exceptions.h"

using ovra::data_transfer::ServiceObject;

namespace {

using Segments = std::vector<std::wstring>;

constexpr char kNoSuchSegment[] = "The path has no segment of this name";

bool isName(const std::wstring& segment) { return !segment.empty() && segment.front() == L'{'; }

Segments segmentsOf(const RouteRow& row) {
  Segments segments;
  boost::algorithm::split(segments, std::wstring(row.path), boost::algorithm::is_any_of(L"/"));
  return segments;
}

/// Whatever stands in the places of names: the values to come decide on those.
bool leadsTo(const RouteRow& row, const PluginRequest& request) {
  const Segments segments = segmentsOf(row);
  return row.method == request.method && keyOf(row) == request.path &&
         std::equal(segments.begin(), segments.end(), request.segments.begin(), request.segments.end(),
                    [](const std::wstring& told, const std::wstring& given) {
                      return isName(told) || told == given;
                    });
}

std::wstring& segmentCalled(const std::wstring& name, PluginRequest& request) {
  for (const RouteRow* const row : catalogue()) {
    if (!leadsTo(*row, request)) continue;
    const Segments segments = segmentsOf(*row);
    const auto found = std::find(segments.begin(), segments.end(), name);
    if (found != segments.end()) return request.segments[static_cast<std::size_t>(found - segments.begin())];
  }
  throw ListenerException(kErrorInvalidParameter, kNoSuchSegment);
}

}  // namespace

void putArgument(PluginRequest& request, const std::wstring& argument, const ServiceObject& value) {
  if (isName(argument)) {
    segmentCalled(argument, request) = value.toString();
  } else if (request.body.isNull() || request.body.isObject()) {
    request.body.member(argument) = value;
  }
}
