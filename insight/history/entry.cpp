#include "history/entry.h"

#include "view/object_form.h"

namespace insight {

namespace {

boost::json::value textOrNull(const std::string& text) {
  if (text.empty()) return nullptr;
  return boost::json::string(text);
}

}  // namespace

boost::json::object formOf(const Entry& entry) {
  boost::json::object form;
  form["row"] = entry.row;
  form["at"] = timeForm(static_cast<std::uint64_t>(entry.atMs));
  form["kind"] = entry.kind;
  form["severity"] = severityWord(entry.severity);
  form["actor"] = textOrNull(entry.actor);
  if (entry.object.type.empty()) {
    form["object"] = nullptr;
  } else {
    form["object"] = formOf(entry.object);
  }
  form["operation"] = textOrNull(entry.operation);
  form["outcome"] = textOrNull(entry.outcome);
  form["details"] = entry.body;
  return form;
}

std::optional<Severity> severityOf(const std::string& word) {
  for (const Severity severity :
       {Severity::kOk, Severity::kInfo, Severity::kWarning, Severity::kUnknown, Severity::kCritical}) {
    if (severityWord(severity) == word) return severity;
  }
  return {};
}

}  // namespace insight
