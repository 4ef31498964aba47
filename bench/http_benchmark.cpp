#include <benchmark/benchmark.h>

#include <boost/chrono/system_clocks.hpp>
#include <cstdlib>
#include <ctime>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

#include "answers/json_writer.h"
#include "api/plugin_endpoints.h"
#include "host/identity/single_token.h"
#include "host/net/served_table.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"
#include "side_by_side.h"
#include "support/http_connection.h"

namespace {

constexpr std::size_t kVolumes = 24;
constexpr host::JsonBounds kBodies{32, 20'000};
constexpr char kToken[] = "token-of-the-benchmark";
constexpr unsigned kOk = 200;

/// A server around a plug-in, and a client with a connection that stays open.
class ServedPlugin {
 public:
  ServedPlugin() = default;
  ServedPlugin(const ServedPlugin&) = delete;
  ServedPlugin& operator=(const ServedPlugin&) = delete;
  ~ServedPlugin() {
    m_connection->close();
    m_server.stop();
  }

  void getByHttp() {
    const HttpConnection::Response response = m_connection->get("/api/v1/mirn/volumes", kToken);
    if (response.result_int() == kOk) return;
    std::cerr << "The server refused.\n" << response.body() << '\n';
    std::exit(EXIT_FAILURE);
  }

  RunningPlugin running{large_machine::makeWithVolumes(kVolumes)};

 private:
  host::EndpointTable endpoints() {
    host::EndpointTable table;
    addPluginEndpoints(table, running.plugin, running.plugin.getHandledPaths(), kBodies);
    return table;
  }

  const host::SingleToken m_token{kToken};
  host::ServedTable m_server{endpoints(), m_token};
  std::unique_ptr<HttpConnection> m_connection = std::make_unique<HttpConnection>(m_server.port());
};

/// Processor time of all threads.
struct ProcessClock {
  using Seconds = boost::chrono::duration<double>;
  static Seconds now() { return Seconds(static_cast<double>(std::clock()) / CLOCKS_PER_SEC); }
};

/// Floor: the same request, asked of the plug-in.
template <class Clock>
void getVolumes(benchmark::State& state) {
  ServedPlugin served;
  runBesideFloor<Clock>(
      state, [&] { served.getByHttp(); },
      [&] { benchmark::DoNotOptimize(served.running.get(L"mirn/volumes")); });
}

/// Floor: as above; what is added is the writing of the answer alone.
void getVolumesAndWriteJson(benchmark::State& state) {
  RunningPlugin running(large_machine::makeWithVolumes(kVolumes));
  runBesideFloor(
      state, [&] { benchmark::DoNotOptimize(host::writeJson(running.get(L"mirn/volumes"))); },
      [&] { benchmark::DoNotOptimize(running.get(L"mirn/volumes")); });
}

BENCHMARK_TEMPLATE(getVolumes, boost::chrono::steady_clock)->UseManualTime();
BENCHMARK_TEMPLATE(getVolumes, ProcessClock)->UseManualTime();
BENCHMARK(getVolumesAndWriteJson)->UseManualTime();

}  // namespace

BENCHMARK_MAIN();
