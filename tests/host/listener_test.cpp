#include "host/listener.h"

#include <gtest/gtest.h>

#include <boost/system/system_error.hpp>

namespace {

using boost::asio::ip::tcp;

class ListenerTest : public testing::Test {
 protected:
  boost::asio::io_context m_io;
  const tcp::endpoint m_anyPort{boost::asio::ip::address_v4::loopback(), 0};
};

TEST_F(ListenerTest, TellsWhichPortItGot) { EXPECT_NE(Listener(m_io, m_anyPort).endpoint().port(), 0); }

TEST_F(ListenerTest, SharesItsPortWithNobody) {
  const Listener listener(m_io, m_anyPort);
  EXPECT_THROW(Listener(m_io, listener.endpoint()), boost::system::system_error);

  constexpr bool kReuseAddress = true;
  EXPECT_THROW(tcp::acceptor(m_io, listener.endpoint(), kReuseAddress), boost::system::system_error);
}

TEST_F(ListenerTest, LeavesItsPortToTheNext) {
  const tcp::endpoint endpoint = Listener(m_io, m_anyPort).endpoint();
  EXPECT_EQ(Listener(m_io, endpoint).endpoint(), endpoint);
}

}  // namespace
