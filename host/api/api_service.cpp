#include "api/api_service.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <memory>
#include <utility>

#include "api/api_path.h"
#include "api/audit.h"
#include "text.h"

namespace host {

namespace {

constexpr wchar_t kTokenParameter[] = L"access_token";
constexpr char kOptions[] = "OPTIONS";

void requireJson(const RequestHead& head) {
  if (!head.hasBody || head.contentType.empty()) return;
  const std::string type =
      boost::algorithm::trim_copy(head.contentType.substr(0, head.contentType.find(';')));
  if (!boost::algorithm::iequals(type, "application/json")) {
    throw Refusal(415, "The body is not of the type application/json");
  }
}

bool isUnderApi(const RequestTarget& target) {
  return !target.segments.empty() && target.segments.front() == kApiSegment;
}

Job methodsJob(const std::string& allowed) {
  Job job;
  job.operation = "listMethods";
  job.run = [allowed](const std::string&) { return Answer{204, {}, {}, {{"Allow", allowed}}}; };
  return job;
}

void requireRole(const Identity& identity, Role role) {
  if (identity.role >= role) return;
  throw Refusal(403, std::string("This takes the role \"") + toText(role) + "\"; yours is \"" +
                         toText(identity.role) + "\"");
}

const ApiEndpoint& requireEndpoint(const EndpointTable::Resource* resource, const ApiEndpoint* endpoint) {
  if (resource == nullptr) throw Refusal(404, "There is nothing under this path");
  if (endpoint == nullptr) {
    throw Refusal(405, "This path takes other methods", {{"Allow", resource->allowed()}});
  }
  return *endpoint;
}

}  // namespace

ApiService::ApiService(EndpointTable table, const IAuthenticator& authenticator)
    : m_table(std::move(table)), m_authenticator(authenticator) {}

Job ApiService::prepare(const RequestHead& head) const {
  if (head.target == "*" && head.method == kOptions)
    return methodsJob("GET, HEAD, POST, PUT, DELETE, OPTIONS");
  auto call = std::make_shared<Call>();
  call->target = parseTarget(head.target);
  call->client = head.client;
  const EndpointTable::Resource* const resource = m_table.find(call->target.segments);
  if (resource != nullptr && head.method == kOptions) return methodsJob(resource->allowed());
  const ApiEndpoint* const found = resource == nullptr ? nullptr : resource->find(head.method);
  call->identity = identify(head, call->target, found);
  const ApiEndpoint& endpoint = requireEndpoint(resource, found);
  if (endpoint.role) requireRole(call->identity, *endpoint.role);
  requireJson(head);
  Job job;
  job.lane = endpoint.lane;
  job.identity = call->identity.name;
  job.operation = endpoint.operation;
  job.isChange = endpoint.isChange;
  job.run = [call, &endpoint](const std::string& body) { return endpoint.handle(*call, body); };
  if (endpoint.isChange)
    job.run = audited(std::move(job.run), auditRecordOf(head, *call, *resource, endpoint), endpoint);
  return job;
}

/// Everything under "api" takes somebody known, whether it is there or not, but for what is open to all.
Identity ApiService::identify(const RequestHead& head, RequestTarget& target,
                              const ApiEndpoint* endpoint) const {
  const bool takesParameter = endpoint == nullptr || endpoint->takesTokenParameter;
  Credentials credentials{head.authorization, {}, takesParameter, head.client};
  const auto parameter = target.parameters.find(kTokenParameter);
  if (parameter != target.parameters.end()) {
    credentials.parameter = wideToUtf8(parameter->second);
    target.parameters.erase(parameter);  // a secret between the client and the host
  }
  if (credentials.parameter && !takesParameter) {
    throw Refusal(400, "The token belongs into the Authorization field alone");
  }
  const bool isOpen = endpoint == nullptr ? !isUnderApi(target) : !endpoint->role;
  return isOpen ? Identity() : m_authenticator.identify(credentials);
}

}  // namespace host
