#ifndef MIRN_TESTS_HOST_SERVICE_TLS_CLIENT_H
#define MIRN_TESTS_HOST_SERVICE_TLS_CLIENT_H

#include <openssl/ssl.h>

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "support/test_certificate.h"

namespace host {

/// A client that trusts one authority, and may have a certificate of its own.
class TlsClient {
 public:
  explicit TlsClient(const TestCertificate& authority) {
    m_context.add_certificate_authority(boost::asio::buffer(authority.certificate()));
    m_context.set_verify_mode(boost::asio::ssl::verify_peer);
  }

  void show(const TestCertificate& own) {
    m_context.use_certificate(boost::asio::buffer(own.certificate()), boost::asio::ssl::context::pem);
    m_context.use_private_key(boost::asio::buffer(own.key()), boost::asio::ssl::context::pem);
  }
  void speakOnly(int version) {
    SSL_CTX_set_min_proto_version(m_context.native_handle(), version);
    SSL_CTX_set_max_proto_version(m_context.native_handle(), version);
    SSL_CTX_set_security_level(m_context.native_handle(), 0);  // lets old versions be asked for at all
  }
  void speakProtocols(const std::string& list) {
    SSL_CTX_set_alpn_protos(m_context.native_handle(), reinterpret_cast<const unsigned char*>(list.data()),
                            static_cast<unsigned>(list.size()));
  }

  /// False when the two cannot agree.
  bool connect(std::uint16_t port) {
    m_stream.emplace(m_io, m_context);
    m_stream->next_layer().connect(
        boost::asio::ip::tcp::endpoint(boost::asio::ip::address_v4::loopback(), port));
    boost::system::error_code error;
    m_stream->handshake(boost::asio::ssl::stream_base::client, error);
    return !error;
  }
  std::string version() { return SSL_get_version(m_stream->native_handle()); }

  void send(const std::string& request) { boost::asio::write(*m_stream, boost::asio::buffer(request)); }

  /// What comes next, up to `end`.
  std::string receive(const std::string& end) {
    std::string text;
    boost::system::error_code error;
    char character = 0;
    while (text.find(end) == std::string::npos &&
           boost::asio::read(*m_stream, boost::asio::buffer(&character, 1), error) == 1) {
      text += character;
    }
    m_end = error;
    return text;
  }
  std::string receiveExactly(std::size_t size) {
    std::string text(size, '\0');
    boost::asio::read(*m_stream, boost::asio::buffer(text));
    return text;
  }
  boost::system::error_code end() const { return m_end; }

 private:
  boost::asio::io_context m_io;
  boost::asio::ssl::context m_context{boost::asio::ssl::context::tls_client};
  std::optional<boost::asio::ssl::stream<boost::asio::ip::tcp::socket>> m_stream;
  boost::system::error_code m_end;
};

}  // namespace host

#endif
