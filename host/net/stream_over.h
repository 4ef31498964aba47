#ifndef MIRN_HOST_NET_STREAM_OVER_H
#define MIRN_HOST_NET_STREAM_OVER_H

#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/stream_traits.hpp>
#include <utility>

#include "net/client_stream.h"

namespace host {

/// A connected socket of any kind.
using SocketStream = boost::asio::generic::stream_protocol::socket;

/// What is the same whether `Layer` is a `SocketStream` or one that encrypts on top of it. How a stream
/// begins and ends is left to who derives.
template <class Layer>
class StreamOver : public ClientStream {
 public:
  boost::asio::any_io_executor executor() override { return m_layer.get_executor(); }
  const Client& client() const override { return m_client; }
  const Destination& destination() const override { return m_destination; }

  void readSome(boost::asio::mutable_buffer buffer, OnRead onRead) override {
    m_layer.async_read_some(buffer, std::move(onRead));
  }

  void write(const Buffers& buffers, OnDone onDone) override {
    boost::asio::async_write(
        m_layer, buffers,
        [onDone = std::move(onDone)](const ErrorCode& error, std::size_t) { onDone(error); });
  }

  void close() override {
    ErrorCode ignored;
    socket().close(ignored);
  }
  void turnAway(const std::string&) override { close(); }

 protected:
  template <class... Arguments>
  StreamOver(Client client, Destination destination, Arguments&&... arguments)
      : m_client(std::move(client)),
        m_destination(std::move(destination)),
        m_layer(std::forward<Arguments>(arguments)...) {}

  SocketStream& socket() { return boost::beast::get_lowest_layer(m_layer); }

  Client m_client;
  Destination m_destination;
  Layer m_layer;
};

}  // namespace host

#endif
