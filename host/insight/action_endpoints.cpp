#include "insight/action_endpoints.h"

#include <algorithm>
#include <boost/json/serialize.hpp>
#include <string>
#include <utility>

#include "actions/action_form.h"
#include "api/api_path.h"
#include "insight/action_schemas.h"
#include "insight/insight_read.h"
#include "insight/page.h"
#include "view/machine_view_source.h"
#include "view/object_path.h"

namespace host {

namespace {

// Places of the arguments among the segments.
constexpr std::size_t kType = 3;
constexpr std::size_t kId = 4;
constexpr std::size_t kOperation = 5;
constexpr std::size_t kArgument = 6;

insight::ObjectRef requireObject(const Call& call, const insight::MachineView& machine) {
  const auto& segments = call.target.segments;
  const auto object = insight::objectNamed(machine, segments[kType], segments[kId]);
  if (!object) throw Refusal(404, "There is no such object");
  return *object;
}

const insight::Operation& requireOperation(const Call& call, const InsightDesk& desk) {
  const auto& segments = call.target.segments;
  const auto found =
      std::find_if(desk.operations->begin(), desk.operations->end(), [&](const insight::Operation& each) {
        return each.id == segments[kOperation] && each.objectType == segments[kType];
      });
  if (found == desk.operations->end()) throw Refusal(404, "There is no such operation on the object");
  return *found;
}

const insight::OperationField& requireField(const Call& call, const insight::Operation& operation) {
  const auto* const field = operation.field(call.target.segments[kArgument]);
  if (field == nullptr) throw Refusal(404, "The operation has no such argument");
  return *field;
}

Answer actionsAnswer(const Call& call, const InsightDesk& desk) {
  const auto machine = desk.views->viewOfStructure();
  const insight::ObjectRef object = requireObject(call, *machine);
  const auto& segments = call.target.segments;
  const auto actions = insight::actionsOn(segments[kType], segments[kId], *desk.operations, desk.rehearsed);
  return jsonAnswer(boost::json::serialize(insight::formOf(object, actions)));
}

/// Everything in the query but the page is what is known of other arguments.
std::map<std::wstring, std::wstring> givenIn(const Call& call, const insight::Operation& operation) {
  std::map<std::wstring, std::wstring> given = call.target.parameters;
  given.erase(L"limit");
  given.erase(L"cursor");
  for (const auto& [name, value] : given) {
    if (operation.field(name) == nullptr) throw Refusal(400, "The query names what is no argument");
  }
  return given;
}

Answer candidatesAnswer(const Call& call, const InsightDesk& desk) {
  const auto machine = desk.views->viewOfStructure();
  requireObject(call, *machine);
  const insight::Operation& operation = requireOperation(call, desk);
  const insight::CandidateQuestion question{operation, requireField(call, operation),
                                            call.target.segments[kId], givenIn(call, operation)};
  const Page page = pageIn(call.target.parameters);
  std::vector<insight::Candidate> candidates = insight::candidatesFor(question, *machine);
  const std::size_t count = candidates.size();
  const auto at = [&](std::size_t place) {
    return candidates.begin() + static_cast<std::ptrdiff_t>(std::min(place, count));
  };
  std::vector<insight::Candidate> shown(at(page.begin), at(page.begin + page.limit));
  insight::judge(shown, question, desk.rehearsed);
  const auto bounds = insight::sizeBoundsFor(question, *machine);
  return jsonAnswer(boost::json::serialize(insight::formOf(shown, bounds, page.next(count))));
}

std::vector<DocumentedParameter> objectParameters() {
  return {{"type", true, "The type of the object.",
           R"({"type": "string", "enum": ["volume", "disk", "array", "controller", "port", "service"]})"},
          {"id", true, "Its id; service for the service itself.", R"({"type": "string"})"}};
}

ApiEndpoint actionsEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint = insightRead("listActions", apiPath(desk->plugin, L"actions/{type}/{id}"));
  EndpointDocument document{
      "actions",
      "list",
      "Tells what can be done with an object now: each operation, and each fixed word of it.",
      "An action is allowed, refused, or needs further arguments. The library keeps the last "
      "word.",
      {{200, "The actions.", actionsSchema()}, {404, {}}}};
  document.parameters = objectParameters();
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) { return actionsAnswer(call, *desk); };
  return endpoint;
}

ApiEndpoint candidatesEndpoint(const std::shared_ptr<InsightDesk>& desk) {
  ApiEndpoint endpoint =
      insightRead("listCandidates", apiPath(desk->plugin, L"actions/{type}/{id}/{operation}/{argument}"));
  EndpointDocument document{"actions",
                            "candidates",
                            "Lists the values that an argument of an operation may have, each judged ahead.",
                            "Further arguments may be given in the query by their names; lists with commas.",
                            {{200, "A page of values.", candidatesSchema()}, {404, {}}}};
  document.parameters = objectParameters();
  document.parameters.push_back({"operation", true, "The id of the operation.", R"({"type": "string"})"});
  document.parameters.push_back({"argument", true, "The name of the argument.", R"({"type": "string"})"});
  for (DocumentedParameter& each : pageParameters()) document.parameters.push_back(std::move(each));
  document.columns = {"value", "object", "allowed", "words"};
  endpoint.document = std::move(document);
  endpoint.handle = [desk](const Call& call, const std::string&) { return candidatesAnswer(call, *desk); };
  return endpoint;
}

}  // namespace

void addActionEndpoints(EndpointTable& table, const std::shared_ptr<InsightDesk>& desk) {
  table.add(actionsEndpoint(desk));
  table.add(candidatesEndpoint(desk));
}

}  // namespace host
