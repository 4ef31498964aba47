#include "net/connections.h"

#include <gtest/gtest.h>

namespace host {

namespace {

struct FakeOccupant : Occupant {
  void giveUp() override { hasGivenUp = true; }
  void stop() override { isStopped = true; }

  bool hasGivenUp = false;
  bool isStopped = false;
};

class ConnectionsTest : public testing::Test {
 protected:
  using Held = std::shared_ptr<FakeOccupant>;

  static Limits limits() {
    Limits limits;
    limits.connections = 4;
    limits.connectionsOfOne = 2;
    return limits;
  }

  static Client client(const std::string& address) {
    Client client;
    client.address = address;
    return client;
  }

  static Client loopback() {
    Client client;
    client.address = "127.0.0.1";
    client.isLoopback = true;
    return client;
  }

  /// Nothing when there was no place.
  Held add(const Client& client) {
    auto occupant = std::make_shared<FakeOccupant>();
    return m_connections.add(occupant, client) ? occupant : nullptr;
  }

  Held addBusy(const Client& client) {
    const Held occupant = add(client);
    if (occupant) m_connections.wake(occupant.get());
    return occupant;
  }

  Connections m_connections{limits()};
};

TEST_F(ConnectionsTest, TakeInUpToTheBound) {
  const Held held[] = {addBusy(loopback()), addBusy(loopback()), addBusy(loopback()), addBusy(loopback())};
  for (const Held& one : held) EXPECT_TRUE(one);
  EXPECT_FALSE(add(loopback()));
}

TEST_F(ConnectionsTest, TakeInAnotherForOneThatHasEnded) {
  const Held held[] = {addBusy(loopback()), addBusy(loopback()), addBusy(loopback()), addBusy(loopback())};
  m_connections.remove(held[1].get());
  EXPECT_TRUE(add(loopback()));
}

TEST_F(ConnectionsTest, TheOneThatHasRestedForLongestMakesPlace) {
  const Held held[] = {add(loopback()), add(loopback()), add(loopback()), add(loopback())};
  m_connections.wake(held[0].get());
  m_connections.rest(held[0].get());
  m_connections.wake(held[1].get());

  EXPECT_TRUE(addBusy(loopback()));
  EXPECT_TRUE(held[2]->hasGivenUp);
  EXPECT_TRUE(addBusy(loopback()));
  EXPECT_TRUE(held[3]->hasGivenUp);
  EXPECT_TRUE(addBusy(loopback()));
  EXPECT_TRUE(held[0]->hasGivenUp);
  EXPECT_FALSE(add(loopback()));
  EXPECT_FALSE(held[1]->hasGivenUp);
}

TEST_F(ConnectionsTest, RestingAnewDoesNotMakeTheRestShorter) {
  const Held held[] = {add(loopback()), add(loopback()), add(loopback()), add(loopback())};
  m_connections.rest(held[0].get());
  EXPECT_TRUE(add(loopback()));
  EXPECT_TRUE(held[0]->hasGivenUp);
}

TEST_F(ConnectionsTest, OfOneAddressThereAreOnlyAFew) {
  const Held held[] = {addBusy(client("192.0.2.1")), addBusy(client("192.0.2.1"))};
  EXPECT_TRUE(held[1]);
  EXPECT_FALSE(add(client("192.0.2.1")));
  EXPECT_TRUE(add(client("192.0.2.2")));
}

TEST_F(ConnectionsTest, AnAddressThatIsFullMakesPlaceOfItsOwn) {
  const Held other = add(client("192.0.2.2"));
  const Held held[] = {add(client("192.0.2.1")), add(client("192.0.2.1"))};
  EXPECT_TRUE(add(client("192.0.2.1")));
  EXPECT_FALSE(other->hasGivenUp);
  EXPECT_TRUE(held[0]->hasGivenUp);
  EXPECT_FALSE(held[1]->hasGivenUp);
}

TEST_F(ConnectionsTest, AnAddressHasItsPlacesBack) {
  {
    const Held held[] = {addBusy(client("192.0.2.1")), addBusy(client("192.0.2.1"))};
    for (const Held& one : held) m_connections.remove(one.get());
  }
  const Held held[] = {addBusy(client("192.0.2.1")), addBusy(client("192.0.2.1"))};
  EXPECT_TRUE(held[1]);
}

TEST_F(ConnectionsTest, NeitherLoopbackNorUnixSocketHasTheBoundOfOneAddress) {
  const Held held[] = {addBusy(loopback()), addBusy(loopback()), addBusy(loopback())};
  EXPECT_TRUE(held[2]);
  const Held local = addBusy(Client());
  EXPECT_TRUE(local);
}

TEST_F(ConnectionsTest, OneIsClosedToGetADescriptor) {
  const Held held[] = {addBusy(loopback()), add(loopback()), add(loopback())};
  m_connections.closeLongestResting();
  EXPECT_TRUE(held[1]->hasGivenUp);
  EXPECT_FALSE(held[2]->hasGivenUp);
}

TEST_F(ConnectionsTest, TheStopReachesAllAndLetsNoneIn) {
  const Held held[] = {addBusy(loopback()), add(loopback())};
  m_connections.stop();
  for (const Held& one : held) EXPECT_TRUE(one->isStopped);
  EXPECT_FALSE(add(loopback()));
}

}  // namespace

}  // namespace host
