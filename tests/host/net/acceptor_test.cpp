#include "net/acceptor.h"

#include <gtest/gtest.h>

#include <boost/system/system_error.hpp>

namespace host {

namespace {

using boost::asio::ip::tcp;

class AcceptorTest : public testing::Test {
 protected:
  boost::asio::io_context m_io;
  const tcp::endpoint m_anyPort{boost::asio::ip::address_v4::loopback(), 0};
};

TEST_F(AcceptorTest, TellsWhichPortItGot) { EXPECT_NE(Acceptor(m_io, m_anyPort).endpoint().port(), 0); }

TEST_F(AcceptorTest, SharesItsPortWithNobody) {
  const Acceptor acceptor(m_io, m_anyPort);
  EXPECT_THROW(Acceptor(m_io, acceptor.endpoint()), boost::system::system_error);

  constexpr bool kReuseAddress = true;
  EXPECT_THROW(tcp::acceptor(m_io, acceptor.endpoint(), kReuseAddress), boost::system::system_error);
}

TEST_F(AcceptorTest, LeavesItsPortToTheNext) {
  const tcp::endpoint endpoint = Acceptor(m_io, m_anyPort).endpoint();
  EXPECT_EQ(Acceptor(m_io, endpoint).endpoint(), endpoint);
}

}  // namespace

}  // namespace host
