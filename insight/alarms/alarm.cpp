#include "alarms/alarm.h"

#include "health/health_form.h"
#include "history/form_reading.h"
#include "history/moment.h"
#include "text.h"

namespace insight {

boost::json::object formOf(const Alarm& alarm) {
  boost::json::object form = formOf(alarm.cause, static_cast<std::uint64_t>(alarm.sinceMs));
  form["state"] = alarm.clearedMs ? "cleared" : "open";
  form["cleared"] = alarm.isEndUnseen ? boost::json::value("unknown") : momentForm(alarm.clearedMs);
  form["count"] = alarm.count;
  form["acknowledged"] = nullptr;
  if (alarm.acknowledgedMs) {
    form["acknowledged"] = {{"by", alarm.acknowledgedBy}, {"at", momentForm(alarm.acknowledgedMs)}};
  }
  return form;
}

LastingRecord recordOf(const Alarm& alarm) {
  return {alarm.id(),    alarm.cause.kind, wideToUtf8(alarm.cause.object.id),
          alarm.sinceMs, alarm.clearedMs,  formOf(alarm)};
}

Alarm alarmOf(const LastingRecord& record) {
  Alarm alarm;
  alarm.cause.kind = record.kind;
  alarm.cause.severity = severityOf(textIn(record.body, "severity")).value_or(Severity::kUnknown);
  alarm.cause.object = objectRefIn(record.body, "object");
  alarm.cause.path = objectRefsIn(record.body, "path");
  alarm.cause.text = textIn(record.body, "text");
  alarm.cause.atRisk = objectRefsIn(record.body, "atRisk");
  alarm.sinceMs = record.fromMs;
  alarm.clearedMs = record.toMs;
  const std::string state = textIn(record.body, "state");
  alarm.isEndUnseen =
      record.toMs.has_value() && (state != "cleared" || textIn(record.body, "cleared") == "unknown");
  alarm.count = static_cast<std::uint64_t>(numberIn(record.body, "count").value_or(1));
  if (const boost::json::object* const acknowledged = objectIn(record.body, "acknowledged")) {
    alarm.acknowledgedBy = textIn(*acknowledged, "by");
    alarm.acknowledgedMs = momentIn(*acknowledged, "at");
  }
  return alarm;
}

}  // namespace insight
