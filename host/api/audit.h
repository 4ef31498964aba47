#ifndef MIRN_HOST_API_AUDIT_H
#define MIRN_HOST_API_AUDIT_H

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

/// `run`, with a line in the audit about how it went.
std::function<Answer(const std::string&)> audited(std::function<Answer(const std::string&)> run,
                                                  AuditRecord record, const ApiEndpoint& endpoint);

}  // namespace host

#endif
