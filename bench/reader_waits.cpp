#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iomanip>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "renaming.h"
#include "running_plugin.h"
#include "scripted_library/large_machine.h"
#include "served_plugin.h"

// What readers of a list and whoever changes something wait for each other: lists of 24 volumes are asked for
// at a steady pace by 2, 8 and 32 readers, first by themselves, and then while one picture after the other is
// taken and exchanged and a volume renamed again and again. They are asked of the plug-in itself, and of a
// server around it, as clients do. Fails where the 99th percentile of a read is beyond three times the quiet
// one (the median of five rounds: what a thread meets on its way to a core is up to chance), or a renaming
// takes more than 50 ms. What of it is the cores, and not the lock, is told by the same reads beside a
// process that does the same to a plug-in of its own. The argument tells for how many seconds each of these
// goes on.

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

/// One read, and nothing else.
using Read = std::function<void()>;
/// Gives each reader what it reads with.
using ReadMaker = std::function<Read()>;

/// Times of all reads of so many readers in so many seconds. They begin at different moments of their pace.
std::vector<double> timesOfReads(const ReadMaker& makeRead, std::size_t readers, double seconds) {
  std::vector<std::vector<double>> times(readers);
  std::vector<Read> reads;
  for (std::size_t i = 0; i < readers; ++i) reads.push_back(makeRead());
  std::vector<std::thread> threads;
  const auto begin = Clock::now();
  for (std::size_t i = 0; i < readers; ++i) {
    threads.emplace_back([&, i] {
      Clock::time_point next = begin + kPace * static_cast<int>(i) / static_cast<int>(readers);
      while (Seconds(next - begin).count() < seconds) {
        std::this_thread::sleep_until(next);
        times[i].push_back(secondsOf(reads[i]));
        next = std::max<Clock::time_point>(next + kPace, Clock::now());
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::vector<double> all;
  for (const auto& some : times) all.insert(all.end(), some.begin(), some.end());
  return all;
}

struct Busy {
  std::vector<double> reads;
  std::vector<double> renamings;
  std::uint64_t exchanges = 0;
};

/// What `read` tells while pictures are exchanged and a volume is renamed.
Busy whileBusy(RunningPlugin& running, const std::function<std::vector<double>()>& read) {
  Busy busy;
  Renaming renaming(running);
  const std::uint64_t before = running.library.events().eventWaits();
  {
    const Repeating exchanging([&] { running.library.events().wakeAndSettle(); });
    const Repeating changing([&] { busy.renamings.push_back(secondsOf([&] { renaming.rename(); })); });
    busy.reads = read();
  }
  busy.exchanges = running.library.events().eventWaits() - before;
  return busy;
}

constexpr char kAsNeighbour[] = "--as-neighbour";

/// Does not come back.
void beNeighbour() {
  RunningPlugin running(large_machine::makeWithVolumes(kVolumes));
  whileBusy(running, [] {
    while (true) pause();
    return std::vector<double>();
  });
}

/// This program in a process of its own, as busy as can be; ends with this.
class Neighbour {
 public:
  Neighbour() : m_process(fork()) {
    if (m_process < 0) throw std::runtime_error("There is no process for the neighbour.");
    if (m_process == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      execl("/proc/self/exe", "reader_waits", kAsNeighbour, nullptr);
      _exit(EXIT_FAILURE);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    if (waitpid(m_process, nullptr, WNOHANG) != 0) throw std::runtime_error("The neighbour is gone.");
  }
  Neighbour(const Neighbour&) = delete;
  Neighbour& operator=(const Neighbour&) = delete;
  ~Neighbour() {
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
  }

 private:
  const pid_t m_process;
};

/// Where lists are read.
struct Height {
  const char* name;
  std::function<ReadMaker(RunningPlugin&)> readsOf;
};

ReadMaker readsOfPlugin(RunningPlugin& running) {
  return [&running] { return [&running] { running.get(L"mirn/volumes"); }; };
}

ReadMaker readsOfServer(RunningPlugin& running) {
  const auto served = std::make_shared<ServedPlugin>(running);
  return [served] {
    const auto client = std::make_shared<ServedPlugin::Client>(*served);
    return [client] { client->getVolumes(); };
  };
}

struct Waits {
  double timesSlower;
  double longestRenaming;
};

Waits measureOnce(const Height& height, std::size_t readers, double seconds) {
  RunningPlugin running(large_machine::makeWithVolumes(kVolumes));
  const ReadMaker makeRead = height.readsOf(running);
  const auto read = [&] { return timesOfReads(makeRead, readers, seconds); };
  const double quiet = percentile99(read());
  const double beside = [&] {
    const Neighbour neighbour;
    return percentile99(read());
  }();
  const Busy busy = whileBusy(running, read);
  const double slow = percentile99(busy.reads);
  const double longest = *std::max_element(busy.renamings.begin(), busy.renamings.end());
  std::cout << std::setw(9) << height.name << std::setw(9) << readers << std::setw(12)
            << quiet * kMillisecondsPerSecond << std::setw(13) << beside * kMillisecondsPerSecond
            << std::setw(11) << slow * kMillisecondsPerSecond << std::setw(8) << slow / quiet << std::setw(13)
            << static_cast<double>(busy.exchanges) / seconds << std::setw(13)
            << static_cast<double>(busy.renamings.size()) / seconds << std::setw(13)
            << longest * kMillisecondsPerSecond << std::endl;
  return {slow / quiet, longest};
}

/// Whether both bounds hold.
bool measure(const Height& height, std::size_t readers, double seconds) {
  std::vector<double> timesSlower;
  double longest = 0;
  for (std::size_t round = 0; round < kRounds; ++round) {
    const Waits waits = measureOnce(height, readers, seconds);
    timesSlower.push_back(waits.timesSlower);
    longest = std::max(longest, waits.longestRenaming);
  }
  const auto middle = timesSlower.begin() + kRounds / 2;
  std::nth_element(timesSlower.begin(), middle, timesSlower.end());
  const bool holds = *middle <= kMostTimesSlower && longest <= kLongestRenaming;
  std::cout << "  median: " << *middle << " times, longest renaming " << longest * kMillisecondsPerSecond
            << " ms: " << (holds ? "holds" : "too long") << std::endl;
  return holds;
}

}  // namespace

int main(int count, char** arguments) try {
  const std::string argument = count > 1 ? arguments[1] : "4";
  if (argument == kAsNeighbour) beNeighbour();
  const double seconds = std::stod(argument);
  std::cout << std::fixed << std::setprecision(2)
            << "  read of  readers   quiet, ms   beside, ms   busy, ms   times  exchanges/s  renamings/s"
               "  longest, ms\n";
  bool holds = true;
  for (const Height& height : {Height{"server", readsOfServer}, Height{"plug-in", readsOfPlugin}}) {
    for (const std::size_t readers : {2, 8, 32}) holds = measure(height, readers, seconds) && holds;
  }
  return holds ? EXIT_SUCCESS : EXIT_FAILURE;
} catch (const std::exception& error) {
  std::cerr << error.what() << std::endl;
  return EXIT_FAILURE;
}
