#include "net/connection.h"

#include <gtest/gtest.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <memory>
#include <utility>

#include "host/identity/single_token.h"

namespace host {

namespace {

/// A client that agrees at once and then says nothing.
class SilentStream : public ClientStream {
 public:
  SilentStream(boost::asio::io_context& io, bool& isClosed) : m_io(io), m_isClosed(isClosed) {}

  boost::asio::any_io_executor executor() override { return m_io.get_executor(); }
  void open(OnDone onDone) override {
    boost::asio::post(m_io, [onDone = std::move(onDone)] { onDone({}); });
  }
  const Client& client() const override { return m_client; }
  const Destination& destination() const override { return m_destination; }
  void readSome(boost::asio::mutable_buffer, OnRead onRead) override { m_onRead = std::move(onRead); }
  void write(const Buffers&, OnDone onDone) override { end(std::move(onDone)); }
  void finish(OnDone onDone) override { end(std::move(onDone)); }
  void close() override {
    m_isClosed = true;
    if (const auto onRead = std::exchange(m_onRead, nullptr)) {
      boost::asio::post(m_io, [onRead] { onRead(boost::asio::error::operation_aborted, 0); });
    }
  }
  void quit(OnDone onDone) override {
    close();
    end(std::move(onDone));
  }
  void turnAway(const std::string&) override { close(); }

 private:
  void end(OnDone onDone) {
    boost::asio::post(m_io, [onDone = std::move(onDone)] { onDone({}); });
  }

  boost::asio::io_context& m_io;
  bool& m_isClosed;
  const Client m_client{};
  const Destination m_destination{};
  OnRead m_onRead;
};

class ConnectionStopTest : public testing::Test {
 protected:
  std::shared_ptr<Connection> makeConnection() {
    auto connection =
        std::make_shared<Connection>(std::make_unique<SilentStream>(m_loops.first(), m_isClosed), m_state);
    EXPECT_TRUE(m_state.connections.add(connection, Client()));
    return connection;
  }

  /// All that can be done without the client.
  void turn() { m_loops.first().poll(); }

  EventLoops m_loops{1};
  SingleToken m_authenticator{"token"};
  ApiService m_service{EndpointTable(), m_authenticator, {16, 16}};
  SharedState m_state{m_loops,        m_service, Limits(), HostNames(), false, Connections(Limits()),
                      Lanes(Limits())};
  bool m_isClosed = false;
};

TEST_F(ConnectionStopTest, EndsOneThatWaitsForItsFirstRequest) {
  makeConnection()->start();
  turn();
  EXPECT_FALSE(m_isClosed);

  m_state.connections.stop();
  turn();

  EXPECT_TRUE(m_isClosed);
}

TEST_F(ConnectionStopTest, EndsOneThatHasNotBegunToWait) {
  const auto connection = makeConnection();

  m_state.connections.stop();
  connection->start();
  turn();

  EXPECT_TRUE(m_isClosed);
}

}  // namespace

}  // namespace host
