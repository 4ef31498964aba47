#ifndef MIRN_BENCH_SERVED_PLUGIN_H
#define MIRN_BENCH_SERVED_PLUGIN_H

#include <cstdlib>
#include <iostream>

#include "api/plugin_endpoints.h"
#include "host/identity/single_token.h"
#include "host/net/served_table.h"
#include "running_plugin.h"
#include "support/http_connection.h"

/// A server around a plug-in that outlives it.
class ServedPlugin {
 public:
  explicit ServedPlugin(RunningPlugin& running) : m_server(endpoints(running.plugin), m_token) {}
  ServedPlugin(const ServedPlugin&) = delete;
  ServedPlugin& operator=(const ServedPlugin&) = delete;
  ~ServedPlugin() { m_server.stop(); }

  std::uint16_t port() const { return m_server.port(); }

  /// A client whose connection stays open. It goes ahead of the server.
  class Client {
   public:
    explicit Client(const ServedPlugin& served) : m_connection(served.port()) {}
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;
    ~Client() { m_connection.close(); }

    void getVolumes() {
      const HttpConnection::Response response = m_connection.get("/api/v1/mirn/volumes", kToken);
      if (response.result_int() == kOk) return;
      std::cerr << "The server refused.\n" << response.body() << '\n';
      std::exit(EXIT_FAILURE);
    }

   private:
    HttpConnection m_connection;
  };

 private:
  static constexpr char kToken[] = "token-of-the-benchmark";
  static constexpr unsigned kOk = 200;

  static host::EndpointTable endpoints(mirn_plugin& plugin) {
    constexpr host::JsonBounds kBodies{32, 20'000};
    host::EndpointTable table;
    addPluginEndpoints(table, plugin, plugin.getHandledPaths(), kBodies);
    return table;
  }

  const host::SingleToken m_token{kToken};
  host::ServedTable m_server;
};

#endif
