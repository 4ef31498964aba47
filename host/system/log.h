#ifndef MIRN_HOST_SYSTEM_LOG_H
#define MIRN_HOST_SYSTEM_LOG_H

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace host {

/// What the host leaves on standard error for those who look after it: a JSON object a line, written at once,
/// from any thread. Each has `log` (its kind) and `time` (RFC 3339, UTC, milliseconds). No control character
/// stands in it as it is, whatever a client sent, and no token.

/// A request that was answered, or refused; in a line of the kind "request".
struct RequestRecord {
  std::string client;     ///< Its address.
  std::string identity;   ///< Empty where nobody is known.
  std::string operation;  ///< Its id; empty where there is none.
  std::string method;
  std::string target;  ///< As it came.
  unsigned status = 0;
  std::uint64_t bytes = 0;  ///< Of the answer's body.
  std::chrono::microseconds duration{0};
};

/// A change that was tried; in a line of the kind "audit".
struct AuditRecord {
  std::string client;
  std::string identity;
  std::string operation;
  std::map<std::string, std::string> objects;  ///< What it names, by argument.
  unsigned status = 0;
  std::string reason;  ///< Of a refusal; empty when it was done.
};

void logRequest(const RequestRecord& record);
void logAudit(const AuditRecord& record);

/// The lines, without their end; `ticks` as tick_clock.h counts them.
std::string lineOf(const RequestRecord& record, std::int64_t ticks);
std::string lineOf(const AuditRecord& record, std::int64_t ticks);

/// The target with the value of each `access_token` masked, however its name is written.
std::string withoutToken(std::string_view target);

}  // namespace host

#endif
