#include "identity/passing_secrets.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>

#include "host/identity/moved_clock.h"
#include "identity/secrets.h"

namespace host {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class PassingSecretsTest : public testing::Test {
 protected:
  std::string nameOf(const std::string& secret) {
    const auto identity = m_secrets.find(sha256Hex(secret));
    return identity ? identity->name : "nobody";
  }

  MovedClock m_clock;
  PassingSecrets m_secrets{seconds(600), 3, m_clock.clock()};
};

TEST_F(PassingSecretsTest, StandForSomebody) {
  m_secrets.add("one", {"anna", Role::kOperate});
  m_secrets.add("two", {"ben", Role::kObserve});
  EXPECT_EQ(nameOf("one"), "anna");
  EXPECT_EQ(m_secrets.find(sha256Hex("one"))->role, Role::kOperate);
  EXPECT_EQ(nameOf("two"), "ben");
  EXPECT_EQ(nameOf("three"), "nobody");
  EXPECT_EQ(nameOf("one"), "anna");
}

TEST_F(PassingSecretsTest, EndWithTheirTime) {
  m_secrets.add("one", {"anna", Role::kOperate});
  m_clock.pass(seconds(600) - milliseconds(1));
  EXPECT_EQ(nameOf("one"), "anna");
  m_secrets.add("two", {"ben", Role::kObserve});
  m_clock.pass(milliseconds(1));
  EXPECT_EQ(nameOf("one"), "nobody");
  EXPECT_FALSE(m_secrets.take(sha256Hex("one")));
  EXPECT_EQ(nameOf("two"), "ben");
}

TEST_F(PassingSecretsTest, AreTakenOnce) {
  m_secrets.add("one", {"anna", Role::kOperate});
  EXPECT_EQ(m_secrets.take(sha256Hex("one"))->name, "anna");
  EXPECT_FALSE(m_secrets.take(sha256Hex("one")));
  EXPECT_EQ(nameOf("one"), "nobody");
}

TEST_F(PassingSecretsTest, AreTakenByOneOfMany) {
  m_secrets.add("one", {"anna", Role::kOperate});
  std::atomic<int> taken{0};
  std::vector<std::future<void>> takers;
  for (int i = 0; i < 16; ++i) {
    takers.push_back(std::async(std::launch::async, [&] {
      if (m_secrets.take(sha256Hex("one"))) ++taken;
    }));
  }
  for (auto& taker : takers) taker.get();
  EXPECT_EQ(taken, 1);
}

TEST_F(PassingSecretsTest, AreNoMoreThanSoMany) {
  for (const char* const secret : {"one", "two", "three", "four"})
    m_secrets.add(secret, {secret, Role::kObserve});
  EXPECT_EQ(nameOf("one"), "nobody");
  EXPECT_EQ(nameOf("two"), "two");
  EXPECT_EQ(nameOf("four"), "four");
}

}  // namespace

}  // namespace host
