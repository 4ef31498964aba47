#include "net/acceptor.h"

#include <gtest/gtest.h>

#include <boost/system/system_error.hpp>

#include "net/peer.h"

namespace host {

namespace {

using boost::asio::ip::tcp;

/// Nobody is taken in here.
const Acceptor::MakeStream kNoStream;

class AcceptorTest : public testing::Test {
 protected:
  boost::asio::io_context m_io;
  const tcp::endpoint m_anyPort{boost::asio::ip::address_v4::loopback(), 0};
};

TEST_F(AcceptorTest, TellsWhichPortItGot) {
  EXPECT_NE(tcpEndpoint(Acceptor(m_io, m_anyPort, kNoStream).endpoint()).port(), 0);
}

TEST_F(AcceptorTest, SharesItsPortWithNobody) {
  const Acceptor acceptor(m_io, m_anyPort, kNoStream);
  EXPECT_THROW(Acceptor(m_io, acceptor.endpoint(), kNoStream), boost::system::system_error);

  constexpr bool kReuseAddress = true;
  EXPECT_THROW(tcp::acceptor(m_io, tcpEndpoint(acceptor.endpoint()), kReuseAddress),
               boost::system::system_error);
}

TEST_F(AcceptorTest, LeavesItsPortToTheNext) {
  const Endpoint endpoint = Acceptor(m_io, m_anyPort, kNoStream).endpoint();
  EXPECT_EQ(Acceptor(m_io, endpoint, kNoStream).endpoint(), endpoint);
}

}  // namespace

}  // namespace host
