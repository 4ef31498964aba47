#ifndef MIRN_HOST_NET_PLAIN_STREAM_H
#define MIRN_HOST_NET_PLAIN_STREAM_H

#include <memory>

#include "net/client_stream.h"
#include "net/stream_over.h"

namespace host {

/// Bytes as they are, over TCP or a Unix socket.
std::unique_ptr<ClientStream> makePlainStream(boost::asio::generic::stream_protocol::socket socket,
                                              Client client, Destination destination);

}  // namespace host

#endif
