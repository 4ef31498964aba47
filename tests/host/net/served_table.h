#ifndef MIRN_TESTS_HOST_NET_SERVED_TABLE_H
#define MIRN_TESTS_HOST_NET_SERVED_TABLE_H

#include <cstdint>
#include <string>
#include <utility>

#include "api/api_service.h"
#include "net/server.h"

namespace host {

/// A server in this process, on a free port of the loopback.
class ServedTable {
 public:
  static Options usual() {
    Options options;
    options.port = 0;
    options.threads = 2;
    return options;
  }

  /// `authenticator` outlives it.
  ServedTable(EndpointTable table, const IAuthenticator& authenticator, const Options& options = usual())
      : m_service(std::move(table), authenticator, {16, 16}), m_server(options, {}) {
    m_server.start(m_service);
  }

  std::uint16_t port() const {
    const std::string url = m_server.url();
    return static_cast<std::uint16_t>(std::stoul(url.substr(url.rfind(':') + 1)));
  }

  /// Stops it; false when something was still under way after the drain time.
  bool stop() { return m_server.drain(); }

 private:
  const ApiService m_service;
  Server m_server;
};

}  // namespace host

#endif
