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
constexpr wchar_t kDryRunParameter[] = L"dryRun";
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

/// Whether the call is only to be tried. The word is between the client and the host.
bool takeDryRun(RequestTarget& target) {
  const auto parameter = target.parameters.find(kDryRunParameter);
  if (parameter == target.parameters.end()) return false;
  const std::wstring word = parameter->second;
  target.parameters.erase(parameter);
  if (word == L"true") return true;
  if (word == L"false") return false;
  throw Refusal(400, "The parameter \"dryRun\" is neither true nor false");
}

/// Harmless whatever is tried, and no business of the audit's.
void rehearse(const std::shared_ptr<const Call>& call, const ApiEndpoint& endpoint, Job& job) {
  if (!endpoint.rehearse) throw Refusal(422, "The plug-in cannot tell ahead what a request would do");
  job.lane = Lane::kReads;
  job.run = [call, &endpoint](const std::string& body) { return endpoint.rehearse(*call, body); };
}

void perform(const std::shared_ptr<const Call>& call, const ApiEndpoint& endpoint, Job& job) {
  job.lane = endpoint.lane;
  job.isChange = endpoint.isChange;
  job.run = [call, &endpoint](const std::string& body) { return endpoint.handle(*call, body); };
  if (!endpoint.begin) return;
  job.begin = [call, &endpoint](const std::shared_ptr<Exchange>& exchange, std::string body) {
    endpoint.begin(call, exchange, std::move(body));
  };
}

void listMethods(const std::string& allowed, Job& job) {
  job.operation = "listMethods";
  job.lane = Lane::kAtOnce;
  job.run = [allowed](const std::string&) { return Answer{204, {}, {}, {{"Allow", allowed}}}; };
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

ApiService::ApiService(EndpointTable table, const IAuthenticator& authenticator, const TargetBounds& targets,
                       ChangeWitness* witness)
    : m_table(std::move(table)), m_authenticator(authenticator), m_targets(targets), m_witness(witness) {}

void ApiService::prepare(RequestHead head, Job& job) const {
  if (head.target == "*" && head.method == kOptions)
    return listMethods("GET, HEAD, POST, PUT, DELETE, OPTIONS", job);
  auto call = std::make_shared<Call>();
  call->target = parseTarget(head.target, m_targets);
  call->client = head.client;
  call->wishes = std::move(head.wishes);
  call->authenticator = &m_authenticator;
  const EndpointTable::Resource* const resource = m_table.find(call->target.segments);
  if (resource != nullptr && head.method == kOptions) return listMethods(resource->allowed(), job);
  const ApiEndpoint* const found = resource == nullptr ? nullptr : resource->find(head.method);
  if (found != nullptr) job.operation = found->operation;
  call->identity = identify(head, call->target, found);
  job.identity = call->identity.name;
  const ApiEndpoint& endpoint = requireEndpoint(resource, found);
  if (endpoint.role) requireRole(call->identity, *endpoint.role);
  requireJson(head);
  if (endpoint.takesDryRun && takeDryRun(call->target)) return rehearse(call, endpoint, job);
  perform(call, endpoint, job);
  if (!endpoint.isChange) return;
  job.run = audited(std::move(job.run), auditRecordOf(head, *call, *resource, endpoint), endpoint, m_witness);
}

/// Everything under "api" takes somebody known, whether it is there or not, but for what is open to all.
Identity ApiService::identify(RequestHead& head, RequestTarget& target, const ApiEndpoint* endpoint) const {
  const bool takesParameter = endpoint == nullptr || endpoint->takesTokenParameter;
  Credentials credentials{std::move(head.authorization), {}, takesParameter, head.client, head.proven};
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
