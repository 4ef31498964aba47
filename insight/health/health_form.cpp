#include "health/health_form.h"

#include "text.h"
#include "view/object_form.h"

namespace insight {

namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

object formOfVolume(const VolumeHealth& health) {
  const Tolerance& tolerance = health.tolerance;
  return {{"id", wideToUtf8(health.volume.id)},
          {"name", wideToUtf8(health.volume.name)},
          {"mayFail", tolerance.mayFail},
          {"exact", tolerance.isExact},
          {"reason", tolerance.isExact ? value(nullptr) : value(tolerance.reason)}};
}

}  // namespace

array formOf(const std::vector<NextStep>& steps) {
  array forms;
  for (const NextStep& step : steps) {
    object arguments;
    for (const auto& [name, given] : step.arguments) arguments[name] = wideToUtf8(given);
    forms.push_back(object{{"operation", step.operation}, {"arguments", std::move(arguments)}});
  }
  return forms;
}

object formOf(const Cause& cause, std::optional<std::uint64_t> since) {
  return {{"id", cause.id()},
          {"kind", cause.kind},
          {"severity", severityWord(cause.severity)},
          {"object", formOf(cause.object)},
          {"path", formOf(cause.path)},
          {"since", since ? value(timeForm(*since)) : value("unknown")},
          {"text", cause.text},
          {"atRisk", formOf(cause.atRisk)},
          {"steps", formOf(cause.steps)}};
}

object formOf(const HealthReport& report, const SinceWhen& sinceWhen) {
  array causes;
  for (const Cause& cause : report.causes) {
    causes.push_back(formOf(cause, sinceWhen ? sinceWhen(cause.id()) : std::nullopt));
  }
  array volumes;
  for (const VolumeHealth& volume : report.volumes) volumes.push_back(formOfVolume(volume));
  return {{"severity", severityWord(report.severity)},
          {"position", formOf(report.position)},
          {"takenAt", report.takenAt ? value(timeForm(*report.takenAt)) : value(nullptr)},
          {"causes", std::move(causes)},
          {"volumes", std::move(volumes)}};
}

}  // namespace insight
