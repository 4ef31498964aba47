#include "wire/trust.h"

#include <openssl/x509v3.h>

#include <boost/asio/ip/address.hpp>

#include "exit_status.h"

namespace mirnctl {

namespace ssl = boost::asio::ssl;

ssl::context trustingContext(const std::string& caFile) {
  ssl::context context(ssl::context::tls_client);
  context.set_options(ssl::context::default_workarounds | ssl::context::no_tlsv1 | ssl::context::no_tlsv1_1);
  context.set_verify_mode(ssl::verify_peer);
  boost::system::error_code error;
  context.set_default_verify_paths(error);
  if (!caFile.empty()) context.load_verify_file(caFile, error);
  if (error) throw Failure(ExitStatus::kUsage, "certificates in " + caFile + ": " + error.message());
  return context;
}

void expectName(SSL* connection, const std::string& host) {
  boost::system::error_code error;
  boost::asio::ip::make_address(host, error);
  if (!error) {
    X509_VERIFY_PARAM_set1_ip_asc(SSL_get0_param(connection), host.c_str());
    return;
  }
  SSL_set1_host(connection, host.c_str());
  SSL_set_tlsext_host_name(connection, host.c_str());
}

}  // namespace mirnctl
