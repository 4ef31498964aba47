#include "whatif/what_if.h"

#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <chrono>
#include <fstream>
#include <string>
#include <thread>

#include "answers/answer.h"
#include "answers/problem.h"

namespace host {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds kShort{200};
constexpr std::chrono::seconds kSoon{20};

/// Programs in a folder of their own.
class WhatIfTest : public testing::Test {
 protected:
  ~WhatIfTest() override { boost::filesystem::remove_all(m_folder); }

  std::string program(const std::string& script) {
    const boost::filesystem::path file = m_folder / "program";
    std::ofstream(file.string()) << "#!/bin/sh\n" << script << "\n";
    boost::filesystem::permissions(file, boost::filesystem::owner_all);
    return file.string();
  }

  std::string path(const std::string& name) const { return (m_folder / name).string(); }

  static Problem refusalOf(WhatIf& whatIf) {
    try {
      whatIf.ask("?");
      return {0, "it answered", ""};
    } catch (const std::exception& failure) {
      return problemOf(failure);
    }
  }

 private:
  const boost::filesystem::path m_folder = [] {
    const auto folder =
        boost::filesystem::temp_directory_path() / boost::filesystem::unique_path("mirn-%%%%%%%%");
    boost::filesystem::create_directory(folder);
    return folder;
  }();
};

TEST_F(WhatIfTest, AsksAndIsAnswered) {
  WhatIf whatIf(program("printf 'to '; cat"));
  EXPECT_EQ(whatIf.ask("be"), "to be");
  EXPECT_EQ(whatIf.ask("do"), "to do");
}

TEST_F(WhatIfTest, IsToldWhyThereIsNoAnswer) {
  WhatIf whatIf(program("printf 'not simulated' >&2; exit 3"));
  const Problem problem = refusalOf(whatIf);
  EXPECT_EQ(problem.status, 422U);
  EXPECT_EQ(problem.detail, "The machine cannot be worked through: not simulated");
}

TEST_F(WhatIfTest, NeedsItsProgram) {
  WhatIf whatIf("");
  EXPECT_EQ(refusalOf(whatIf).status, 422U);
}

TEST_F(WhatIfTest, FailsWithItsProgram) {
  WhatIf failing(program("exit 1"));
  EXPECT_EQ(refusalOf(failing).status, 500U);
  WhatIf crashing(program("kill -KILL $$"));
  EXPECT_EQ(refusalOf(crashing).status, 500U);
}

TEST_F(WhatIfTest, KillsOneThatHangs) {
  WhatIf whatIf(program("exec sleep 600"), kShort);
  const auto begin = Clock::now();
  EXPECT_EQ(refusalOf(whatIf).status, 503U);
  EXPECT_LT(Clock::now() - begin, kSoon);
  EXPECT_EQ(refusalOf(whatIf).detail, "Working it through took too long");  // and is free again
}

TEST_F(WhatIfTest, AsksOneAtATime) {
  WhatIf whatIf(
      program("touch " + path("begun") + "; while [ ! -e " + path("go") + " ]; do sleep 0.01; done; cat"),
      kSoon);
  std::string first;
  std::thread asking([&] { first = whatIf.ask("first"); });
  const auto begin = Clock::now();
  while (!boost::filesystem::exists(path("begun")) && Clock::now() - begin < kSoon) std::this_thread::yield();
  try {
    whatIf.ask("second");
    ADD_FAILURE() << "it was asked beside the other";
  } catch (const Refusal& refusal) {
    EXPECT_EQ(problemOf(refusal).status, 503U);
    EXPECT_EQ(refusal.headers, (Headers{{"Retry-After", "21"}}));
  }
  std::ofstream(path("go")).flush();
  asking.join();
  EXPECT_EQ(first, "first");
}

}  // namespace
}  // namespace host
