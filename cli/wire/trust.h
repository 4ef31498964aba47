#ifndef MIRN_CLI_WIRE_TRUST_H
#define MIRN_CLI_WIRE_TRUST_H

#include <boost/asio/ssl/context.hpp>
#include <string>

namespace mirnctl {

/// Trusts the system's list, and who is in `caFile` unless that is empty. Raises `Failure`.
boost::asio::ssl::context trustingContext(const std::string& caFile);

/// The other side must show a certificate for `host`, a name or an address.
void expectName(SSL* connection, const std::string& host);

}  // namespace mirnctl

#endif
