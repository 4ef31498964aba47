#include "history/moment.h"

#include "tick_clock.h"
#include "utc_time.h"
#include "view/object_form.h"

namespace insight {

std::optional<std::int64_t> momentOf(const std::string& text) {
  const auto ticks = utcTicks(text);
  if (!ticks) return {};
  return *ticks / kTicksPerMillisecond;
}

boost::json::value momentForm(const std::optional<std::int64_t>& moment) {
  if (!moment) return nullptr;
  return timeForm(static_cast<std::uint64_t>(*moment));
}

}  // namespace insight
