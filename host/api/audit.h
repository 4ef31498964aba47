#ifndef MIRN_HOST_API_AUDIT_H
#define MIRN_HOST_API_AUDIT_H

#include <cstdint>
#include <functional>
#include <string>

#include "answers/answer.h"
#include "api/endpoint_table.h"
#include "api/request_head.h"
#include "system/log.h"

namespace host {

/// What is known of a change before it is tried: who, what, and the objects that its path names.
AuditRecord auditRecordOf(const RequestHead& head, const Call& call, const EndpointTable::Resource& resource,
                          const ApiEndpoint& endpoint);

/// The names and values of the members `references` of a JSON object; of a list, its texts with commas
/// between. Nothing of a body that is no object.
std::map<std::string, std::string> referencesIn(const std::string& body,
                                                const std::vector<std::wstring>& references);

/// Hears of each change before it is tried, and after. Safe from any thread; raises nothing.
class ChangeWitness {
 public:
  virtual ~ChangeWitness() = default;

  /// Gives a number to end the change by. `body` is what the client has sent.
  virtual std::uint64_t begin(const AuditRecord& record, const std::string& body) = 0;
  /// The record tells how it went.
  virtual void end(std::uint64_t number, const AuditRecord& record) = 0;
};

/// `run`, with a line in the audit about how it went; `witness`, where there is one, hears of it.
std::function<Answer(const std::string&)> audited(std::function<Answer(const std::string&)> run,
                                                  AuditRecord record, const ApiEndpoint& endpoint,
                                                  ChangeWitness* witness = nullptr);

}  // namespace host

#endif
