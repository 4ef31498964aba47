#include "net/plain_stream.h"

#include <array>
#include <boost/asio/post.hpp>
#include <utility>

namespace host {

namespace {

using boost::asio::generic::stream_protocol;

class PlainStream final : public StreamOver<SocketStream> {
 public:
  PlainStream(stream_protocol::socket socket, Client client, Destination destination)
      : StreamOver(std::move(client), std::move(destination), std::move(socket)) {}

  void open(OnDone onDone) override { onDone({}); }

  void finish(OnDone onDone) override {
    ErrorCode error;
    m_layer.shutdown(stream_protocol::socket::shutdown_send, error);
    finishWith(error, std::move(onDone));
  }

  void quit(OnDone onDone) override {
    close();
    finishWith({}, std::move(onDone));
  }

  /// What the client has sent is taken in first: closing on unread bytes would take the answer back.
  void turnAway(const std::string& answer) override {
    ErrorCode error;
    std::array<char, 4096> unread{};
    m_layer.non_blocking(true, error);
    if (!error) m_layer.write_some(boost::asio::buffer(answer), error);
    m_layer.shutdown(stream_protocol::socket::shutdown_send, error);
    m_layer.read_some(boost::asio::buffer(unread), error);
    close();
  }

 private:
  void finishWith(ErrorCode error, OnDone onDone) {
    boost::asio::post(m_layer.get_executor(), [error, onDone = std::move(onDone)] { onDone(error); });
  }
};

}  // namespace

std::unique_ptr<ClientStream> makePlainStream(stream_protocol::socket socket, Client client,
                                              Destination destination) {
  return std::make_unique<PlainStream>(std::move(socket), std::move(client), std::move(destination));
}

}  // namespace host
