#include "net/server.h"

#include <boost/asio/ip/address.hpp>
#include <boost/system/system_error.hpp>
#include <chrono>
#include <sstream>
#include <stdexcept>

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

std::vector<std::string> hostNames(const Options& options) {
  std::vector<std::string> names = options.serverNames;
  names.push_back(options.address);
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

/// A failure in a handler costs its connection, not the thread.
void runUntilDone(boost::asio::io_context& io) {
  for (;;) {
    try {
      io.run();
      return;
    } catch (const std::exception& failure) {
      report(std::string("a connection failed: ") + failure.what());
    }
  }
}

}  // namespace

Server::Server(const Options& options)
    : m_options(options),
      m_tls(makeTls(options)),
      m_io(static_cast<int>(options.threads)),
      m_acceptor(makeAcceptor(m_io, options, m_tls.get())) {
  listenLocally();
}

/// A socket that was asked for is there or the host does not start. The usual place may be another host's.
void Server::listenLocally() {
  const std::string& path = m_options.unixSocket;
  if (path.empty()) return;
  try {
    m_localAcceptor = host::listenLocally(m_io, path, makeStream);
    m_socketPath = path;
  } catch (const std::runtime_error& failure) {
    if (m_options.needsUnixSocket) throw;
    report(std::string(failure.what()) + "; going on without a Unix socket");
  }
}

Server::~Server() {
  requestStop();
  for (auto& thread : m_threads) thread.wait();
  if (m_state) m_state->lanes.join();  // what a task still holds of a connection needs `m_io`
}

void Server::start(const ApiService& service) {
  m_state.reset(new SharedState{service, m_options.limits, HostNames(hostNames(m_options)),
                                m_options.logRequests, Connections(m_options.limits),
                                Lanes(m_options.limits)});
  keepLittleMemory();
  allowDescriptors(m_options.limits.connections);
  m_acceptor.start(*m_state);
  if (m_localAcceptor) m_localAcceptor->start(*m_state);
  for (std::size_t i = 0; i < m_options.threads; ++i) {
    m_threads.push_back(std::async(std::launch::async, [this] { runUntilDone(m_io); }));
  }
}

void Server::requestStop() {
  // In this order: who sees the port closed may rely on no connection being kept after its answer.
  if (m_state) m_state->connections.stop();
  m_acceptor.stop();
  if (!m_localAcceptor) return;
  m_localAcceptor->stop();
  removeLocalSocket(m_socketPath);
}

void Server::reloadCertificate() try {
  if (m_tls) m_tls->reload();
} catch (const std::runtime_error& failure) {
  report(std::string("the certificate stays as it was: ") + failure.what());
}

bool Server::drain() {
  requestStop();
  const auto deadline = std::chrono::steady_clock::now() + m_options.limits.drainTime;
  for (auto& thread : m_threads) {
    if (thread.wait_until(deadline) != std::future_status::ready) return false;
  }
  return true;
}

std::string Server::url() const {
  std::ostringstream text;
  text << (m_tls ? "https://" : "http://") << tcpEndpoint(m_acceptor.endpoint());
  return text.str();
}

}  // namespace host
