#include <boost/beast/ssl.hpp>

#include "wire/exchange.h"
#include "wire/trust.h"

namespace mirnctl {

namespace ssl = boost::asio::ssl;

namespace {

class SecureConnection : public Exchange {
 public:
  SecureConnection(const Destination& destination, std::chrono::seconds patience)
      : Exchange(destination, patience),
        m_context(trustingContext(destination.caFile)),
        m_stream(m_io, m_context) {
    expectName(m_stream.native_handle(), destination.host);
    Stream& stream = m_stream.next_layer();
    connect(stream);
    complete(stream,
             [&](auto handler) { m_stream.async_handshake(ssl::stream_base::client, std::move(handler)); });
  }

  Reply ask(const Request& request) override { return askOver(m_stream, m_stream.next_layer(), request); }
  Reply follow(const Request& request, const std::function<bool(std::string_view)>& take) override {
    return followOver(m_stream, m_stream.next_layer(), request, take);
  }

 private:
  ssl::context m_context;
  boost::beast::ssl_stream<Stream> m_stream;
};

}  // namespace

std::unique_ptr<Connection> secureConnection(const Destination& destination, std::chrono::seconds patience) {
  return std::make_unique<SecureConnection>(destination, patience);
}

}  // namespace mirnctl
