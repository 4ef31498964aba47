#include "readiness/readiness_form.h"

#include <boost/json/array.hpp>
#include <boost/json/value.hpp>

#include "health/health_form.h"
#include "history/moment.h"
#include "view/object_form.h"

namespace insight {

namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

constexpr std::int64_t kSecondMs = 1000;

const char* stateOf(const CheckResult& check) {
  if (!check.doubt.empty()) return "unknown";
  return check.hasLines ? "found" : "ok";
}

object formOf(const CheckResult& check) {
  return {{"kind", check.kind},
          {"state", stateOf(check)},
          {"reason", check.doubt.empty() ? value(nullptr) : value(check.doubt)}};
}

object formOf(const ExposedMonth& month) {
  return {{"month", month.month},
          {"exposedSeconds", month.exposedMs ? value(*month.exposedMs / kSecondMs) : value("unknown")}};
}

object formOf(const ReadinessLine& line) {
  return {{"kind", line.kind},
          {"severity", severityWord(line.severity)},
          {"objects", formOf(line.objects)},
          {"text", line.text},
          {"details", line.details},
          {"steps", formOf(line.steps)}};
}

template <class Part>
array formsOf(const std::vector<Part>& parts) {
  array forms;
  for (const Part& each : parts) forms.push_back(formOf(each));
  return forms;
}

}  // namespace

object formOf(const ReadinessReport& report) {
  return {{"severity", severityWord(report.severity)},
          {"position", formOf(report.position)},
          {"takenAt", report.takenAt ? value(timeForm(*report.takenAt)) : value(nullptr)},
          {"historyFrom", momentForm(report.historyFromMs)},
          {"verifiedWithinDays", report.verifiedWithinDays},
          {"checks", formsOf(report.checks)},
          {"exposure", formsOf(report.exposure)},
          {"items", formsOf(report.lines)}};
}

}  // namespace insight
