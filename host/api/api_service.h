#ifndef MIRN_HOST_API_API_SERVICE_H
#define MIRN_HOST_API_API_SERVICE_H

#include "api/audit.h"
#include "api/endpoint_table.h"
#include "api/job.h"
#include "api/request_head.h"
#include "api/request_target.h"
#include "identity/authenticator.h"

namespace host {

/// Judges requests and leads them to their endpoints. Knows nothing of connections. Constant after
/// construction, safe from any thread.
class ApiService {
 public:
  /// `authenticator`, who must know whoever asks for what is not open to all, outlives the service, as does
  /// `witness`, who hears of all changes where there is one.
  ApiService(EndpointTable table, const IAuthenticator& authenticator, const TargetBounds& targets,
             ChangeWitness* witness = nullptr);

  /// Judges the request by its header alone, so that a refused one costs no reading of its body. Raises a
  /// `Refusal`: 400, 401, 403, 404, 405 or 415. Who asks for what stands in `job` even then.
  void prepare(RequestHead head, Job& job) const;

 private:
  Identity identify(RequestHead& head, RequestTarget& target, const ApiEndpoint* endpoint) const;

  const EndpointTable m_table;
  const IAuthenticator& m_authenticator;
  const TargetBounds m_targets;
  ChangeWitness* const m_witness;
};

}  // namespace host

#endif
