#ifndef MIRN_HOST_NET_PORT_CLAIM_H
#define MIRN_HOST_NET_PORT_CLAIM_H

#include "net/acceptor.h"

namespace host {

/// Before the socket takes its address: sees to it that no other socket can take the same one meanwhile, and
/// that one can soon afterwards. Systems differ in what they allow without that; one source a system. Raises
/// `boost::system::system_error` with the system's reason.
void claimPort(ListeningSocket& acceptor);

}  // namespace host

#endif
