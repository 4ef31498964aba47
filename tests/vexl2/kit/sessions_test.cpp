#include "sessions.h"

#include <gtest/gtest.h>

namespace vexl2 {
namespace {

/// The status of the refusal that `body` ends with; 0 without one.
template <class Body>
Status refusalOf(const Body& body) {
  try {
    body();
  } catch (const Refusal& refusal) {
    return refusal.status();
  }
  return 0;
}

class SessionsTest : public testing::Test {
 protected:
  SessionHandles m_handles;
  Sessions m_sessions{m_handles};
};

TEST_F(SessionsTest, AreOpenUntilTheyAreClosed) {
  const Handle session = m_sessions.open();
  EXPECT_EQ(refusalOf([&] { m_sessions.requireOpen(session); }), 0U);
  m_sessions.close(session);
  EXPECT_EQ(refusalOf([&] { m_sessions.requireOpen(session); }), VEX_STATUS_INVALID_SESSION);
  EXPECT_EQ(refusalOf([&] { m_sessions.close(session); }), VEX_STATUS_INVALID_SESSION);
}

TEST_F(SessionsTest, HaveHandlesAboveAllObjectsAndNoneTwice) {
  const Handle first = m_sessions.open();
  m_sessions.close(first);
  EXPECT_GE(first, 0x80000000U);
  EXPECT_NE(m_sessions.open(), first);
}

TEST_F(SessionsTest, AreLimited) {
  Handle last = 0;
  for (std::size_t count = 0; count < Sessions::kMaxOpen; ++count) last = m_sessions.open();
  EXPECT_EQ(refusalOf([&] { m_sessions.open(); }), VEX_STATUS_NO_SESSION_LEFT);
  m_sessions.close(last);
  EXPECT_EQ(refusalOf([&] { m_sessions.open(); }), 0U);
}

TEST_F(SessionsTest, EndTogether) {
  const Handle session = m_sessions.open();
  m_sessions.clear();
  EXPECT_EQ(refusalOf([&] { m_sessions.requireOpen(session); }), VEX_STATUS_INVALID_SESSION);
}

TEST(SessionHandlesTest, RunOutAndDoNotBeginAnew) {
  SessionHandles handles(0xFFFFFFFFU);
  EXPECT_EQ(handles.take(), 0xFFFFFFFFU);
  EXPECT_EQ(refusalOf([&] { handles.take(); }), VEX_STATUS_NO_SESSION_LEFT);
  EXPECT_EQ(refusalOf([&] { handles.take(); }), VEX_STATUS_NO_SESSION_LEFT);
}

}  // namespace
}  // namespace vexl2
