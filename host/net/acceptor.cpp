#include "net/acceptor.h"

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <chrono>
#include <memory>
#include <utility>

#include "net/connection.h"
#include "net/peer.h"
#include "net/port_claim.h"
#include "system/report.h"

namespace host {

namespace {

namespace asio = boost::asio;
using boost::system::error_code;

constexpr std::chrono::milliseconds kPauseAfterFailure{100};
constexpr std::chrono::minutes kEpisode{1};  // failures no further apart are one to whoever reads of them

/// The endpoint that the acceptor listens on now.
Endpoint taken(ListeningSocket& acceptor, const Endpoint& endpoint, const std::function<void()>& onTaken) {
  acceptor.open(endpoint.protocol());
  claimPort(acceptor);
  acceptor.bind(endpoint);
  onTaken();
  acceptor.listen();
  return acceptor.local_endpoint();
}

Endpoint takenOver(ListeningSocket& acceptor, const HandedSocket& handed) {
  acceptor.assign(handed.endpoint.protocol(), handed.handle);
  return handed.endpoint;
}

}  // namespace

Acceptor::Acceptor(asio::io_context& io, const Endpoint& endpoint, MakeStream makeStream,
                   const std::function<void()>& onTaken)
    : m_acceptor(io),
      m_pause(io),
      m_makeStream(std::move(makeStream)),
      m_endpoint(taken(m_acceptor, endpoint, onTaken)) {}

Acceptor::Acceptor(asio::io_context& io, const HandedSocket& handed, MakeStream makeStream)
    : m_acceptor(io),
      m_pause(io),
      m_makeStream(std::move(makeStream)),
      m_endpoint(takenOver(m_acceptor, handed)) {}

void Acceptor::start(SharedState& state) {
  asio::post(m_acceptor.get_executor(), [this, &state] { accept(state); });
}

void Acceptor::stop() {
  asio::post(m_acceptor.get_executor(), [this] {
    error_code error;
    m_acceptor.close(error);
    m_pause.cancel();
  });
}

void Acceptor::accept(SharedState& state) {
  m_acceptor.async_accept(state.loops.next(), [this, &state](error_code error, ClientSocket socket) {
    onAccept(state, error, std::move(socket));
  });
}

void Acceptor::onAccept(SharedState& state, error_code error, ClientSocket socket) {
  if (!m_acceptor.is_open()) return;
  if (error) return onFailure(state, error.message());
  try {
    admit(state, std::move(socket));
  } catch (const std::exception& failure) {
    return onFailure(state, failure.what());
  }
  accept(state);
}

void Acceptor::admit(SharedState& state, ClientSocket socket) {
  error_code ignored;
  socket.set_option(asio::ip::tcp::no_delay(true), ignored);  // there is none but for TCP
  const Client client = clientOf(socket);
  const auto connection = std::make_shared<Connection>(m_makeStream(std::move(socket)), state);
  if (state.connections.add(connection, client)) return connection->start();
  connection->turnAway();
}

/// A failure that is not the client's own, such as no descriptors left, would come again at once; it is told
/// when none came for a while. Another connection's end may be what helps.
void Acceptor::onFailure(SharedState& state, const std::string& reason) {
  const auto now = std::chrono::steady_clock::now();
  if (!m_lastFailure || now - *m_lastFailure > kEpisode) report("clients cannot be taken in: " + reason);
  m_lastFailure = now;
  state.connections.closeLongestResting();
  m_pause.expires_after(kPauseAfterFailure);
  m_pause.async_wait([this, &state](error_code) {
    if (m_acceptor.is_open()) accept(state);
  });
}

}  // namespace host
