#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iomanip>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "renaming.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"

// What readers of a list and whoever changes something wait for each other: lists of 24 volumes are asked for
// at a steady pace by 2, 8 and 32 readers, first by themselves, and then while one picture after the other is
// taken and exchanged and a volume renamed again and again. Fails where the 99th percentile of a read is
// beyond three times the quiet one (the median of five rounds: what a thread meets on its way to a core is up
// to chance), or a renaming takes more than 50 ms. What of it is the queue for a core, and not the lock, is
// told by the same reads beside as many threads that compute and share nothing. The argument tells how many
// seconds each of these takes.

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr std::size_t kVolumes = 24;
constexpr auto kPace = std::chrono::milliseconds(10);
constexpr std::size_t kRounds = 5;
constexpr double kMostTimesSlower = 3;
constexpr double kLongestRenaming = 0.050;
constexpr double kMillisecondsPerSecond = 1000;

double secondsOf(const std::function<void()>& work) {
  const auto begin = Clock::now();
  work();
  return Seconds(Clock::now() - begin).count();
}

double percentile99(std::vector<double> times) {
  const auto place = times.begin() + static_cast<std::ptrdiff_t>(times.size() * 99 / 100);
  std::nth_element(times.begin(), place, times.end());
  return *place;
}

/// A thread that does the same until it is told to stop.
class Repeating {
 public:
  explicit Repeating(std::function<void()> work)
      : m_thread([this, work = std::move(work)] {
          while (!m_stops) work();
        }) {}
  Repeating(const Repeating&) = delete;
  Repeating& operator=(const Repeating&) = delete;
  ~Repeating() {
    m_stops = true;
    m_thread.join();
  }

 private:
  std::atomic<bool> m_stops{false};
  std::thread m_thread;
};

/// Times of all reads of so many readers in so many seconds. They begin at different moments of their pace.
std::vector<double> timesOfReads(RunningPlugin& running, std::size_t readers, double seconds) {
  std::vector<std::vector<double>> times(readers);
  std::vector<std::thread> threads;
  const auto begin = Clock::now();
  for (std::size_t i = 0; i < readers; ++i) {
    threads.emplace_back([&, i] {
      Clock::time_point next = begin + kPace * static_cast<int>(i) / static_cast<int>(readers);
      while (Seconds(next - begin).count() < seconds) {
        std::this_thread::sleep_until(next);
        times[i].push_back(secondsOf([&] { running.get(L"mirn/volumes"); }));
        next = std::max<Clock::time_point>(next + kPace, Clock::now());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::vector<double> all;
  for (const auto& some : times) all.insert(all.end(), some.begin(), some.end());
  return all;
}

std::vector<double> timesBesideComputing(RunningPlugin& running, std::size_t readers, double seconds) {
  const auto compute = [] {
    constexpr std::uint64_t kSteps = 10'000;
    volatile std::uint64_t sum = 0;
    for (std::uint64_t i = 0; i < kSteps; ++i) sum = sum + i;
  };
  const Repeating one(compute);
  const Repeating other(compute);
  return timesOfReads(running, readers, seconds);
}

struct Busy {
  std::vector<double> reads;
  std::vector<double> renamings;
  std::uint64_t exchanges = 0;
};

Busy whileBusy(RunningPlugin& running, std::size_t readers, double seconds) {
  Busy busy;
  Renaming renaming(running);
  const std::uint64_t before = running.library.events().eventWaits();
  {
    const Repeating exchanging([&] { running.library.events().wakeAndSettle(); });
    const Repeating changing([&] { busy.renamings.push_back(secondsOf([&] { renaming.rename(); })); });
    busy.reads = timesOfReads(running, readers, seconds);
  }
  busy.exchanges = running.library.events().eventWaits() - before;
  return busy;
}

struct Waits {
  double timesSlower;
  double longestRenaming;
};

Waits measureOnce(std::size_t readers, double seconds) {
  RunningPlugin running(large_machine::makeWithVolumes(kVolumes));
  const double quiet = percentile99(timesOfReads(running, readers, seconds));
  const double computing = percentile99(timesBesideComputing(running, readers, seconds));
  const Busy busy = whileBusy(running, readers, seconds);
  const double slow = percentile99(busy.reads);
  const double longest = *std::max_element(busy.renamings.begin(), busy.renamings.end());
  std::cout << std::setw(7) << readers << std::setw(12) << quiet * kMillisecondsPerSecond << std::setw(16)
            << computing * kMillisecondsPerSecond << std::setw(12) << slow * kMillisecondsPerSecond
            << std::setw(8) << slow / quiet << std::setw(12) << static_cast<double>(busy.exchanges) / seconds
            << std::setw(12) << static_cast<double>(busy.renamings.size()) / seconds << std::setw(12)
            << longest * kMillisecondsPerSecond << std::endl;
  return {slow / quiet, longest};
}

/// Whether both bounds hold.
bool measure(std::size_t readers, double seconds) {
  std::vector<double> timesSlower;
  double longest = 0;
  for (std::size_t round = 0; round < kRounds; ++round) {
    const Waits waits = measureOnce(readers, seconds);
    timesSlower.push_back(waits.timesSlower);
    longest = std::max(longest, waits.longestRenaming);
  }
  const auto middle = timesSlower.begin() + kRounds / 2;
  std::nth_element(timesSlower.begin(), middle, timesSlower.end());
  const bool holds = *middle <= kMostTimesSlower && longest <= kLongestRenaming;
  std::cout << "        median: " << *middle << " times, longest renaming "
            << longest * kMillisecondsPerSecond << " ms: " << (holds ? "holds" : "too long") << std::endl;
  return holds;
}

}  // namespace

int main(int count, char** arguments) try {
  const double seconds = count > 1 ? std::stod(arguments[1]) : 4;
  std::cout
      << std::fixed << std::setprecision(2)
      << "readers   quiet, ms   computing, ms    busy, ms   times exchanges/s renamings/s  longest, ms\n";
  bool holds = true;
  for (const std::size_t readers : {2, 8, 32}) holds = measure(readers, seconds) && holds;
  return holds ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& error) {
  std::cerr << error.what() << std::endl;
  return EXIT_FAILURE;
}
