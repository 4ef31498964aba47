#include "view/object_form.h"

#include "text.h"
#include "tick_clock.h"
#include "utc_time.h"

namespace insight {

using boost::json::array;
using boost::json::object;
using boost::json::value;

object formOf(const ObjectRef& ref) {
  return {{"type", ref.type},
          {"id", ref.id.empty() ? value(nullptr) : value(wideToUtf8(ref.id))},
          {"name", wideToUtf8(ref.name)}};
}

array formOf(const std::vector<ObjectRef>& objects) {
  array forms;
  for (const ObjectRef& each : objects) forms.push_back(formOf(each));
  return forms;
}

object formOf(const ovra::PluginPosition& position) {
  return {{"epoch", wideToUtf8(position.epoch)},
          {"revision", position.revision},
          {"structure", position.structure},
          {"sequence", position.sequence}};
}

boost::json::string timeForm(std::uint64_t milliseconds) {
  return boost::json::string(utcText(static_cast<std::int64_t>(milliseconds) * kTicksPerMillisecond));
}

}  // namespace insight
