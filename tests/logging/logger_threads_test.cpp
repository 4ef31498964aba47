#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "logger.h"

namespace {

/// Not safe by itself: what it counts is whole only when messages come one at a time.
int inside = 0;
int overlaps = 0;
std::vector<std::wstring> lines;

struct Recorder final : ovra::LoggerBaseLogProvider {
  void report(LogLevel, const std::wstring& text) override {
    if (++inside != 1) ++overlaps;
    lines.push_back(text);
    --inside;
  }
};

TEST(LoggerThreads, HandOneWholeMessageAtATime) {
  ovra::LogProviders providers;
  providers.emplace(ovra::kConsoleProvider, ovra::makeLogProvider<Recorder>());
  providers.emplace(ovra::kEventLogProvider, ovra::makeLogProvider<Recorder>());
  ovra::Logger logger(std::move(providers));

  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&logger, thread] {
      for (int message = 0; message < 200; ++message) logger.log(LogLevel::kInfo, std::to_wstring(thread));
    });
  }
  for (auto& thread : threads) thread.join();

  EXPECT_EQ(overlaps, 0);
  ASSERT_EQ(lines.size(), 4u * 200u * 2u);
  for (std::size_t line = 0; line < lines.size(); line += 2) EXPECT_EQ(lines[line], lines[line + 1]);
}

}  // namespace
