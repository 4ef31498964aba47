#include <thread>
#include <vector>

#include "base/atomic_file_fixture.h"

namespace {

class AtomicFileOfManyWriters : public AtomicFileFixture {
 protected:
  /// Runs `body` on four threads, each with a number of its own.
  template <class Body>
  static void together(Body body) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) threads.emplace_back([body, i] { body(i); });
    for (auto& thread : threads) thread.join();
  }
};

TEST_F(AtomicFileOfManyWriters, IsOneOfTheirsWholeAndNoneFails) {
  together([this](int writer) {
    const std::string text(static_cast<std::size_t>(10000 * (writer + 1)), static_cast<char>('a' + writer));
    for (int round = 0; round < 25; ++round) {
      EXPECT_EQ(refusal(text), "") << "writer " << writer << ", round " << round;
    }
  });
  const std::string found = content();
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found, std::string(static_cast<std::size_t>(10000 * (found[0] - 'a' + 1)), found[0]));
  EXPECT_EQ(entries(), 1U);
}

TEST_F(AtomicFileOfManyWriters, IsMadeByOneOfThem) {
  for (int round = 0; round < 25; ++round) {
    const auto path = inFolder(std::to_string(round));
    std::vector<int> made(4);
    together([&](int writer) {
      made[static_cast<std::size_t>(writer)] = makePrivateFile(path, std::to_string(writer)) ? 1 : 0;
    });
    ASSERT_EQ(made[0] + made[1] + made[2] + made[3], 1) << "round " << round;
    const auto writer = static_cast<std::size_t>(std::stoi(readText(path.string())));
    EXPECT_EQ(made[writer], 1);
    EXPECT_EQ(entries(), static_cast<std::size_t>(round + 1));
  }
}

}  // namespace
