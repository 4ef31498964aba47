#include "net/port_claim.h"

namespace host {

/// Lets the address be taken while old connections to it die away, and never from a socket that listens.
void claimPort(ListeningSocket& acceptor) {
  acceptor.set_option(boost::asio::socket_base::reuse_address(true));
}

}  // namespace host
