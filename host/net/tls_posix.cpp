#include <openssl/err.h>
#include <openssl/ssl.h>

#include <array>
#include <boost/asio/post.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "net/peer.h"
#include "net/stream_over.h"
#include "net/tls.h"

namespace host {

namespace {

namespace ssl = boost::asio::ssl;
using boost::asio::generic::stream_protocol;

/// Those of TLS 1.2, all with forward secrecy and authenticated encryption; TLS 1.3 has no others.
constexpr char kCiphers[] = "ECDHE+AESGCM:ECDHE+CHACHA20";
constexpr std::string_view kProtocol = "\x08http/1.1";

struct Freeing {
  void operator()(X509* certificate) const { X509_free(certificate); }
  void operator()(BIO* memory) const { BIO_free(memory); }
};

/// As RFC 2253 writes it; empty without a certificate that we trust.
std::string subjectOf(SSL* connection) {
  const std::unique_ptr<X509, Freeing> certificate(SSL_get1_peer_certificate(connection));
  if (!certificate || SSL_get_verify_result(connection) != X509_V_OK) return {};
  const std::unique_ptr<BIO, Freeing> memory(BIO_new(BIO_s_mem()));
  if (!memory) return {};
  X509_NAME_print_ex(memory.get(), X509_get_subject_name(certificate.get()), 0, XN_FLAG_RFC2253);
  char* text = nullptr;
  const long size = BIO_get_mem_data(memory.get(), &text);
  return {text, static_cast<std::size_t>(size)};
}

class TlsStream final : public StreamOver<ssl::stream<SocketStream>> {
 public:
  TlsStream(stream_protocol::socket socket, Client client, Destination destination,
            std::shared_ptr<ssl::context> context)
      : StreamOver(std::move(client), std::move(destination), std::move(socket), *context),
        m_context(std::move(context)) {}

  void open(OnDone onDone) override {
    m_layer.async_handshake(ssl::stream_base::server, [this, onDone = std::move(onDone)](ErrorCode error) {
      if (!error) m_client.certificateSubject = subjectOf(m_layer.native_handle());
      onDone(error);
    });
  }

  void readSome(boost::asio::mutable_buffer buffer, OnRead onRead) override {
    if (!m_isFinished) return StreamOver::readSome(buffer, std::move(onRead));
    socket().async_read_some(buffer, std::move(onRead));
  }

  /// A client that still sends lets the farewell end early; it has been sent by then, and what comes further
  /// is of no use in clear either.
  void finish(OnDone onDone) override {
    m_layer.async_shutdown([this, onDone = std::move(onDone)](const ErrorCode&) {
      m_isFinished = true;
      ErrorCode error;
      socket().shutdown(stream_protocol::socket::shutdown_send, error);
      onDone(error);
    });
  }

  /// The farewell is with the system before its call returns, unless the client has stopped taking anything.
  void quit(OnDone onDone) override {
    m_layer.async_shutdown([onDone = std::move(onDone)](const ErrorCode& error) { onDone(error); });
    close();
  }

 private:
  std::shared_ptr<ssl::context> m_context;
  bool m_isFinished = false;
};

/// Says that we speak HTTP/1.1, to a client that asks; turns away one that speaks none of it.
int chooseProtocol(SSL*, const unsigned char** chosen, unsigned char* size, const unsigned char* offered,
                   unsigned offeredSize, void*) {
  unsigned char* selected = nullptr;
  const auto* const ours = reinterpret_cast<const unsigned char*>(kProtocol.data());
  if (SSL_select_next_proto(&selected, size, ours, static_cast<unsigned>(kProtocol.size()), offered,
                            offeredSize) != OPENSSL_NPN_NEGOTIATED) {
    return SSL_TLSEXT_ERR_ALERT_FATAL;
  }
  *chosen = selected;
  return SSL_TLSEXT_ERR_OK;
}

void require(bool isDone, const std::string& what) {
  if (isDone) return;
  std::array<char, 256> reason{};
  ERR_error_string_n(ERR_get_error(), reason.data(), reason.size());
  throw std::runtime_error(what + ": " + reason.data());
}

void trustClients(SSL_CTX* context, const std::string& authorities) {
  const char* const file = authorities.c_str();
  require(SSL_CTX_load_verify_locations(context, file, nullptr) == 1, "\"" + authorities + "\"");
  SSL_CTX_set_client_CA_list(context, SSL_load_client_CA_file(file));
  SSL_CTX_set_verify(context, SSL_VERIFY_PEER, nullptr);  // a client without one may show a token
}

std::shared_ptr<ssl::context> makeContext(const TlsFiles& files) {
  ERR_clear_error();
  auto made = std::make_shared<ssl::context>(ssl::context::tls_server);
  SSL_CTX* const context = made->native_handle();
  SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION);
  // Who comes again is asked again: a session of before could outlive what it was let in by.
  SSL_CTX_set_options(context, SSL_OP_NO_COMPRESSION | SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_TICKET |
                                   SSL_OP_CIPHER_SERVER_PREFERENCE);
  SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
  require(SSL_CTX_set_num_tickets(context, 0) == 1, "tickets");
  require(SSL_CTX_set_cipher_list(context, kCiphers) == 1, "ciphers");
  SSL_CTX_set_alpn_select_cb(context, chooseProtocol, nullptr);
  // A key behind a pass phrase is refused; nobody is there to be asked.
  made->set_password_callback([](std::size_t, ssl::context::password_purpose) { return std::string(); });
  require(SSL_CTX_use_certificate_chain_file(context, files.certificate.c_str()) == 1,
          "\"" + files.certificate + "\"");
  require(SSL_CTX_use_PrivateKey_file(context, files.key.c_str(), SSL_FILETYPE_PEM) == 1,
          "\"" + files.key + "\"");
  require(SSL_CTX_check_private_key(context) == 1, "\"" + files.key + "\" is not the certificate's");
  if (!files.clientAuthorities.empty()) trustClients(context, files.clientAuthorities);
  return made;
}

class Tls final : public ITls {
 public:
  explicit Tls(TlsFiles files) : m_files(std::move(files)), m_context(makeContext(m_files)) {}

  void reload() override {
    auto context = makeContext(m_files);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_context = std::move(context);
  }

  std::unique_ptr<ClientStream> makeStream(ClientSocket socket) override {
    Client client = clientOf(socket);
    client.isEncrypted = true;
    Destination destination = destinationOf(socket);
    destination.isEncrypted = true;
    return std::make_unique<TlsStream>(std::move(socket), std::move(client), std::move(destination),
                                       context());
  }

 private:
  std::shared_ptr<ssl::context> context() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_context;
  }

  const TlsFiles m_files;
  std::mutex m_mutex;
  std::shared_ptr<ssl::context> m_context;
};

}  // namespace

std::unique_ptr<ITls> makeTls(const TlsFiles& files) { return std::make_unique<Tls>(files); }

}  // namespace host
