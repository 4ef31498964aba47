#include "insight/history_question.h"

#include <string>

#include "answers/answer.h"
#include "insight/history_schemas.h"
#include "insight/page.h"
#include "insight/schema_parts.h"
#include "text.h"

namespace host {

namespace {

constexpr char kAudit[] = "audit";
constexpr char kMoment[] = R"({"type": "string", "format": "date-time"})";
constexpr char kText[] = R"({"type": "string", "minLength": 1})";

}  // namespace

insight::HistoryQuery historyQueryIn(const Parameters& parameters, Role role) {
  requireKnown(parameters, historyParameters());
  insight::HistoryQuery query;
  query.fromMs = momentIn(parameters, "from");
  query.toMs = momentIn(parameters, "to");
  if (query.fromMs && query.toMs && *query.fromMs > *query.toMs) {
    throw Refusal(400, R"(The parameter "from" lies behind "to")");
  }
  query.kind = wordIn(parameters, "kind", kEntryKinds);
  if (query.kind == kAudit && role < Role::kAdminister) {
    throw Refusal(403, std::string("Entries of the audit take the role \"administer\"; yours is \"") +
                           toText(role) + '"');
  }
  query.withAudit = role >= Role::kAdminister;
  query.severity = insight::severityOf(wordIn(parameters, "severity", kSeverityWords));
  query.objectType = wordIn(parameters, "objectType", kObjectTypes);
  query.objectId = textIn(parameters, "objectId");
  query.actor = textIn(parameters, "actor");
  query.text = textIn(parameters, "text");
  query.limit = limitIn(parameters);
  query.cursor = textIn(parameters, "cursor");
  return query;
}

std::vector<DocumentedParameter> historyParameters() {
  std::vector<DocumentedParameter> parameters{
      {"from", false, "What happened then or later.", kMoment},
      {"to", false, "What happened before then.", kMoment},
      {"kind", false, "Of what kind; audit takes the role administer.", wordSchema(kEntryKinds)},
      {"severity", false, "How bad, just so.", wordSchema(kSeverityWords)},
      {"objectType", false, "To what it happened, by its type.", wordSchema(kObjectTypes)},
      {"objectId", false, "To what it happened, by its id.", kText},
      {"actor", false, "Who did it.", kText},
      {"text", false, "Part of a name, an operation, an outcome or the details.", kText}};
  for (DocumentedParameter& each : pageParameters()) parameters.push_back(std::move(each));
  return parameters;
}

}  // namespace host
