#include <boost/system/system_error.hpp>

#include "net/port_claim.h"

namespace host {

/// The option that other systems want would here let any process take the address, and the requests with it.
void claimPort(ListeningSocket& acceptor) {
  const BOOL exclusive = TRUE;
  const int result = ::setsockopt(acceptor.native_handle(), SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                                  reinterpret_cast<const char*>(&exclusive), sizeof exclusive);
  if (result == 0) return;
  throw boost::system::system_error(::WSAGetLastError(), boost::system::system_category());
}

}  // namespace host
