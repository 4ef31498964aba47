#include "net/event_loops.h"

#include <gtest/gtest.h>

#include <atomic>
#include <boost/asio/post.hpp>
#include <future>
#include <thread>

#include "net/heartbeat.h"

namespace host {

namespace {

using namespace std::chrono_literals;

/// Runs `step` on `loop`, and comes back when it has run.
template <class Step>
void runOn(EventLoops::IoContext& loop, Step step) {
  std::promise<void> done;
  boost::asio::post(loop, [&] {
    step();
    done.set_value();
  });
  done.get_future().wait();
}

TEST(EventLoops, ComeInTurn) {
  EventLoops loops(2);
  EXPECT_EQ(&loops.next(), &loops.at(0));
  EXPECT_EQ(&loops.next(), &loops.at(1));
  EXPECT_EQ(&loops.next(), &loops.at(0));
  EXPECT_EQ(&loops.first(), &loops.at(0));
}

TEST(EventLoops, HaveAThreadEach) {
  EventLoops loops(2);
  loops.start();
  std::thread::id first;
  std::thread::id second;
  runOn(loops.at(0), [&] { first = std::this_thread::get_id(); });
  runOn(loops.at(1), [&] { second = std::this_thread::get_id(); });
  EXPECT_NE(first, second);
  loops.letEnd();
  loops.wait();
}

TEST(EventLoops, EndBehindWhatTheFirstGivesToTheOthers) {
  EventLoops loops(3);
  bool isDone = false;
  boost::asio::post(loops.first(), [&] { boost::asio::post(loops.at(2), [&] { isDone = true; }); });
  loops.letEnd();
  loops.start();
  EXPECT_TRUE(loops.waitUntil(std::chrono::steady_clock::now() + 1min));
  EXPECT_TRUE(isDone);
}

TEST(EventLoops, StayWhileOneHasSomethingToDo) {
  EventLoops loops(2);
  std::promise<void> end;
  boost::asio::post(loops.at(1), [&] { end.get_future().wait(); });
  loops.letEnd();
  loops.start();
  EXPECT_FALSE(loops.waitUntil(std::chrono::steady_clock::now() + 1ms));
  end.set_value();
  loops.wait();
}

TEST(EventLoops, GoOnBehindAFailure) {
  EventLoops loops(1);
  bool isDone = false;
  boost::asio::post(loops.first(), [] { throw std::runtime_error("on purpose"); });
  boost::asio::post(loops.first(), [&] { isDone = true; });
  loops.letEnd();
  loops.start();
  loops.wait();
  EXPECT_TRUE(isDone);
}

TEST(Heartbeat, StopsWhileOneLoopHangs) {
  EventLoops loops(2);
  std::atomic<int> beats{0};
  Heartbeat heartbeat(loops, 1ms, [&] { ++beats; });
  loops.start();
  while (beats < 2) std::this_thread::yield();

  std::promise<void> end;
  std::promise<void> hangs;
  boost::asio::post(loops.at(1), [&] {
    hangs.set_value();
    end.get_future().wait();
  });
  hangs.get_future().wait();
  const int before = beats;
  std::this_thread::sleep_for(20ms);
  EXPECT_LE(beats, before + 1) << "one may have been on its way";

  end.set_value();
  while (beats <= before + 1) std::this_thread::yield();
  heartbeat.stop();
  loops.letEnd();
  loops.wait();
}

}  // namespace

}  // namespace host
