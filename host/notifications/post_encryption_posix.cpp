#include <openssl/err.h>
#include <openssl/ssl.h>

#include <array>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/host_name_verification.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <stdexcept>
#include <utility>

#include "notifications/post_stream.h"

namespace host {

namespace {

namespace ssl = boost::asio::ssl;
using boost::asio::ip::tcp;

bool isAddress(const std::string& host) {
  boost::system::error_code error;
  boost::asio::ip::make_address(host, error);
  return !error;
}

class EncryptedPostStream final : public IPostStream {
 public:
  EncryptedPostStream(boost::asio::io_context& io, std::shared_ptr<ssl::context> context,
                      const std::string& host)
      : m_context(std::move(context)), m_stream(io, *m_context) {
    m_stream.set_verify_mode(ssl::verify_peer);
    m_stream.set_verify_callback(ssl::host_name_verification(host));
    if (!isAddress(host)) SSL_set_tlsext_host_name(m_stream.native_handle(), host.c_str());
  }

  tcp::socket& socket() override { return m_stream.next_layer(); }

  void open(OnDone onDone) override {
    m_stream.async_handshake(ssl::stream_base::client,
                             [onDone = std::move(onDone)](const ErrorCode& error) { onDone(error, 0); });
  }

  void write(boost::asio::const_buffer bytes, OnDone onDone) override {
    boost::asio::async_write(m_stream, bytes, std::move(onDone));
  }

  void readSome(boost::asio::mutable_buffer bytes, OnDone onDone) override {
    m_stream.async_read_some(bytes, std::move(onDone));
  }

  /// A chain that is trusted, and a failure all the same: the certificate is somebody else's.
  std::string whyNotOpened(const ErrorCode& error) override {
    if (error.category() != boost::asio::error::get_ssl_category() ||
        ERR_GET_REASON(static_cast<unsigned long>(error.value())) != SSL_R_CERTIFICATE_VERIFY_FAILED) {
      return error.message();
    }
    const long result = SSL_get_verify_result(m_stream.native_handle());
    const bool isOfAnother = result == X509_V_OK || result == X509_V_ERR_UNSPECIFIED ||
                             result == X509_V_ERR_APPLICATION_VERIFICATION;
    return std::string("the certificate is refused: ") +
           (isOfAnother ? "it does not name the host" : X509_verify_cert_error_string(result));
  }

 private:
  const std::shared_ptr<ssl::context> m_context;
  ssl::stream<tcp::socket> m_stream;
};

class PostEncryption final : public IPostEncryption {
 public:
  explicit PostEncryption(const std::string& authorities)
      : m_context(std::make_shared<ssl::context>(ssl::context::tls_client)) {
    ERR_clear_error();
    SSL_CTX* const context = m_context->native_handle();
    SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
    SSL_CTX_set_options(context, SSL_OP_NO_COMPRESSION | SSL_OP_NO_RENEGOTIATION);
    const bool isTaken = authorities.empty()
                             ? SSL_CTX_set_default_verify_paths(context) == 1
                             : SSL_CTX_load_verify_locations(context, authorities.c_str(), nullptr) == 1;
    if (!isTaken) fail(authorities.empty() ? "the system's authorities" : authorities);
  }

  std::unique_ptr<IPostStream> makeStream(boost::asio::io_context& io, const std::string& host) override {
    return std::make_unique<EncryptedPostStream>(io, m_context, host);
  }

 private:
  [[noreturn]] static void fail(const std::string& what) {
    std::array<char, 256> reason{};
    ERR_error_string_n(ERR_get_error(), reason.data(), reason.size());
    throw std::runtime_error("\"" + what + "\": " + reason.data());
  }

  const std::shared_ptr<ssl::context> m_context;
};

}  // namespace

std::shared_ptr<IPostEncryption> makePostEncryption(const std::string& authorities) {
  return std::make_shared<PostEncryption>(authorities);
}

}  // namespace host
