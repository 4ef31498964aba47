#include "insight/history_endpoints.h"

#include "api/api_path.h"
#include "insight/history_question.h"
#include "insight/history_reading.h"
#include "insight/history_schemas.h"
#include "insight/insight_read.h"
#include "insight/list_answer.h"
#include "service/insight_service.h"

namespace host {

namespace {

Answer historyAnswer(const Call& call, insight::History& history) {
  const insight::HistoryQuery query = historyQueryIn(call.target.parameters, call.identity.role);
  requireHistory(history);
  const insight::HistoryPage page = readingHistory([&] { return history.page(query); });
  boost::json::array items;
  for (const insight::Entry& entry : page.items) items.push_back(formOf(entry));
  return listAnswer({}, std::move(items), page.next);
}

}  // namespace

void addHistoryEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("listHistory", apiPath(desk->plugin, L"history"));
  EndpointDocument document{
      "history",
      "list",
      "Lists what has happened, the newest first, as far as it is kept.",
      "All that is asked for must hold of an entry. What clients did is told to those who "
      "administer.",
      {{200, "A page of entries.", historySchema()}, {422, {}}}};
  document.parameters = historyParameters();
  document.columns = {"at", "kind", "severity", "actor", "outcome", "details"};
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) {
    return historyAnswer(call, desk->service->history());
  };
  table.add(std::move(endpoint));
}

}  // namespace host
