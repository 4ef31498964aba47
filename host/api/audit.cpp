#include "api/audit.h"

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <utility>

#include "answers/problem.h"
#include "text.h"

namespace host {

namespace {

std::string textOf(const boost::json::value& value) {
  if (value.is_string()) return std::string(value.get_string());
  if (!value.is_array()) return boost::json::serialize(value);
  std::string joined;
  for (const auto& element : value.get_array()) {
    if (!joined.empty()) joined += ',';
    joined += textOf(element);
  }
  return joined;
}

/// The words of a problem document, which a refusal is.
std::string reasonIn(const Answer& answer) {
  if (answer.status < 400) return {};
  boost::system::error_code error;
  const auto document = boost::json::parse(answer.body.text(), error);
  const auto* const detail =
      error || !document.is_object() ? nullptr : document.get_object().if_contains("detail");
  return detail == nullptr ? std::string() : textOf(*detail);
}

}  // namespace

AuditRecord auditRecordOf(const RequestHead& head, const Call& call, const EndpointTable::Resource& resource,
                          const ApiEndpoint& endpoint) {
  AuditRecord record;
  record.client = head.client.address;
  record.identity = call.identity.name;
  record.operation = endpoint.operation;
  for (const auto& [name, id] : resource.path.argumentsIn(call.target.segments)) {
    record.objects[wideToUtf8(name)] = wideToUtf8(id);
  }
  return record;
}

std::map<std::string, std::string> referencesIn(const std::string& body,
                                                const std::vector<std::wstring>& references) {
  std::map<std::string, std::string> found;
  if (references.empty()) return found;
  boost::system::error_code error;
  const auto document = boost::json::parse(body, error);
  if (error || !document.is_object()) return found;
  for (const std::wstring& reference : references) {
    const std::string name = wideToUtf8(reference);
    if (const auto* const value = document.get_object().if_contains(name)) found[name] = textOf(*value);
  }
  return found;
}

std::function<Answer(const std::string&)> audited(std::function<Answer(const std::string&)> run,
                                                  AuditRecord record, const ApiEndpoint& endpoint,
                                                  ChangeWitness* witness) {
  return [run = std::move(run), record = std::move(record), &endpoint, witness](const std::string& body) {
    AuditRecord done = record;
    for (auto& [name, id] : referencesIn(body, endpoint.references)) done.objects.emplace(name, id);
    const std::uint64_t number = witness == nullptr ? 0 : witness->begin(done, body);
    const auto conclude = [&](unsigned status, std::string reason) {
      done.status = status;
      done.reason = std::move(reason);
      logAudit(done);
      if (witness != nullptr) witness->end(number, done);
    };
    try {
      Answer answer = run(body);
      conclude(answer.status, reasonIn(answer));
      return answer;
    } catch (const std::exception& failure) {
      const Problem problem = problemOf(failure);
      conclude(problem.status, problem.detail);
      throw;
    } catch (...) {
      conclude(500, {});
      throw;
    }
  };
}

}  // namespace host
