#ifndef MIRN_INSIGHT_HISTORY_MOMENT_H
#define MIRN_INSIGHT_HISTORY_MOMENT_H

#include <boost/json/value.hpp>
#include <cstdint>
#include <optional>
#include <string>

namespace insight {

/// The moment that an RFC 3339 text names, in milliseconds since 1970, UTC; nothing where it names none. For
/// the years 1970 to 9999.
std::optional<std::int64_t> momentOf(const std::string& text);

/// A moment for clients; null where there is none.
boost::json::value momentForm(const std::optional<std::int64_t>& moment);

}  // namespace insight

#endif
