#include "net/server.h"

#include <boost/asio/ip/address.hpp>
#include <boost/system/system_error.hpp>
#include <chrono>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "net/descriptors.h"
#include "net/local_socket.h"
#include "net/peer.h"
#include "net/plain_stream.h"
#include "system/memory.h"
#include "system/report.h"

namespace host {

namespace {

using boost::asio::ip::tcp;

std::unique_ptr<ClientStream> makeStream(ClientSocket socket) {
  Client client = clientOf(socket);
  Destination destination = destinationOf(socket);
  return makePlainStream(std::move(socket), std::move(client), std::move(destination));
}

std::vector<std::string> hostNames(const Options& options, const tcp::endpoint& endpoint) {
  std::vector<std::string> names = options.serverNames;
  names.push_back(endpoint.address().to_string());
  return names;
}

std::unique_ptr<ITls> makeTls(const Options& options) {
  if (options.tlsCertificate.empty()) return {};
  return host::makeTls({options.tlsCertificate, options.tlsKey, options.tlsClientAuthorities});
}

Acceptor::MakeStream streamsBy(ITls* tls) {
  if (!tls) return makeStream;
  return [tls](ClientSocket socket) { return tls->makeStream(std::move(socket)); };
}

Acceptor takeOver(boost::asio::io_context& io, const Options& options, const HandedSocket& handed,
                  Acceptor::MakeStream makeStream) {
  judgeReach(options, tcpEndpoint(handed.endpoint).address().to_string());
  return Acceptor(io, handed, std::move(makeStream));
}

Acceptor makeAcceptor(boost::asio::io_context& io, const Options& options, ITls* tls) {
  const tcp::endpoint endpoint(boost::asio::ip::make_address(options.address), options.port);
  try {
    return Acceptor(io, endpoint, streamsBy(tls));
  } catch (const boost::system::system_error& error) {
    std::ostringstream text;
    text << "cannot listen on " << endpoint << ": " << error.code().message();
    throw std::runtime_error(text.str());
  }
}

}  // namespace

Server::Server(const Options& options, const HandedSockets& handed)
    : m_options(options),
      m_tls(makeTls(options)),
      m_loops(options.threads),
      m_acceptor(handed.network ? takeOver(m_loops.first(), options, *handed.network, streamsBy(m_tls.get()))
                                : makeAcceptor(m_loops.first(), options, m_tls.get())) {
  listenLocally(handed.local);
}

/// A socket that was asked for is there or the host does not start. The usual place may be another host's.
void Server::listenLocally(const std::optional<HandedSocket>& handed) {
  if (handed) {
    m_localAcceptor = std::make_unique<Acceptor>(m_loops.first(), *handed, makeStream);
    m_socketPath = handed->path;
    return;
  }
  const std::string& path = m_options.unixSocket;
  if (path.empty()) return;
  try {
    m_localAcceptor = host::listenLocally(m_loops.first(), path, makeStream);
    m_socketPath = path;
    m_ownsSocketFile = true;
  } catch (const std::runtime_error& failure) {
    if (m_options.needsUnixSocket) throw;
    report(std::string(failure.what()) + "; going on without a Unix socket");
  }
}

Server::~Server() {
  requestStop();
  m_loops.wait();
  if (m_state) m_state->lanes.join();  // what a task still holds of a connection needs `m_loops`
}

void Server::start(const ApiService& service, RequestCounts* counts) {
  m_state.reset(new SharedState{
      m_loops, service, m_options.limits, HostNames(hostNames(m_options, tcpEndpoint(m_acceptor.endpoint()))),
      m_options.logRequests, Connections(m_options.limits), Lanes(m_options.limits), counts});
  keepLittleMemory();
  allowDescriptors(m_options.limits.connections);
  m_acceptor.start(*m_state);
  if (m_localAcceptor) m_localAcceptor->start(*m_state);
  m_loops.start();
}

void Server::beatEvery(std::chrono::microseconds interval, std::function<void()> beat) {
  m_heartbeat = std::make_unique<Heartbeat>(m_loops, interval, std::move(beat));
}

void Server::requestStop() {
  if (m_heartbeat) m_heartbeat->stop();
  // In this order: who sees the port closed may rely on no connection being kept after its answer.
  if (m_state) m_state->connections.stop();
  m_acceptor.stop();
  if (m_localAcceptor) m_localAcceptor->stop();
  m_loops.letEnd();
  // Once: what stands there later is another host's.
  if (std::exchange(m_ownsSocketFile, false)) removeLocalSocket(m_socketPath);
}

void Server::reloadCertificate() try {
  if (m_tls) m_tls->reload();
} catch (const std::runtime_error& failure) {
  report(std::string("the certificate stays as it was: ") + failure.what());
}

bool Server::drain() {
  requestStop();
  return m_loops.waitUntil(std::chrono::steady_clock::now() + m_options.limits.drainTime);
}

std::string Server::url() const {
  std::ostringstream text;
  text << (m_tls ? "https://" : "http://") << tcpEndpoint(m_acceptor.endpoint());
  return text.str();
}

}  // namespace host
