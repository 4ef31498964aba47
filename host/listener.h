#ifndef MIRN_HOST_LISTENER_H
#define MIRN_HOST_LISTENER_H

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/strand.hpp>

#include "host/shared_state.h"

/// Takes connections in and makes a session of each. Must stay until the I/O threads have ended.
class Listener {
 public:
  /// Takes the endpoint; clients may connect from now on and wait.
  ///
  /// @throws boost::system::system_error when the endpoint cannot be had
  Listener(boost::asio::io_context& io, const boost::asio::ip::tcp::endpoint& endpoint);

  /// @param state  outlives the sessions
  void start(SharedState& state);

  /// Gives the endpoint back. Safe from any thread.
  void stop();

  boost::asio::ip::tcp::endpoint endpoint() const { return m_endpoint; }

 private:
  void accept(SharedState& state);
  void onAccept(SharedState& state, boost::system::error_code error, boost::asio::ip::tcp::socket socket);
  void pause(SharedState& state);

  boost::asio::io_context& m_io;
  boost::asio::strand<boost::asio::io_context::executor_type> m_strand;
  boost::asio::ip::tcp::acceptor m_acceptor;
  boost::asio::steady_timer m_pause;
  const boost::asio::ip::tcp::endpoint m_endpoint;
};

#endif
