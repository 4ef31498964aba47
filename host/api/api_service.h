#ifndef MIRN_HOST_API_API_SERVICE_H
#define MIRN_HOST_API_API_SERVICE_H

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
  /// `authenticator`, who must know whoever asks for what is not open to all, outlives the service.
  ApiService(EndpointTable table, const IAuthenticator& authenticator);

  /// Judges the request by its header alone, so that a refused one costs no reading of its body. Raises a
  /// `Refusal`: 400, 401, 403, 404, 405 or 415.
  Job prepare(const RequestHead& head) const;

 private:
  Identity identify(const RequestHead& head, RequestTarget& target, const ApiEndpoint* endpoint) const;

  const EndpointTable m_table;
  const IAuthenticator& m_authenticator;
};

}  // namespace host

#endif
