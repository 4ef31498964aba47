#include <sys/resource.h>
#include <sys/time.h>
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "metrics/process_metrics.h"

namespace host {

namespace {

/// Behind the program's name, which may hold anything: from the state on, the third field of the manual.
constexpr int kStateField = 3;
constexpr int kStartField = 22;
constexpr int kVirtualField = 23;
constexpr int kResidentField = 24;

double secondsOf(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

std::optional<double> processorSeconds() {
  rusage usage{};
  if (::getrusage(RUSAGE_SELF, &usage) != 0) return {};
  return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

/// From a number of ticks behind the start of the system, which no setting of the clock moves.
std::optional<double> startOf(double ticks) {
  timespec sinceBoot{};
  if (::clock_gettime(CLOCK_BOOTTIME, &sinceBoot) != 0) return {};
  const double up = static_cast<double>(sinceBoot.tv_sec) + static_cast<double>(sinceBoot.tv_nsec) / 1e9;
  const double age = up - ticks / static_cast<double>(::sysconf(_SC_CLK_TCK));
  return std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch()).count() - age;
}

void readStatus(ProcessLoad& load) {
  std::ifstream file("/proc/self/stat");
  std::string line;
  if (!std::getline(file, line)) return;
  std::istringstream fields(line.substr(line.rfind(')') + 1));
  std::string field;
  for (int number = kStateField; fields >> field; ++number) {
    if (number == kStartField) load.startedAt = startOf(std::stod(field));
    if (number == kVirtualField) load.virtualBytes = std::stoull(field);
    if (number == kResidentField) {
      load.residentBytes = std::stoull(field) * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    }
  }
}

/// Without the one that looks.
std::optional<std::uint64_t> descriptors() {
  std::error_code error;
  const std::filesystem::directory_iterator open("/proc/self/fd", error);
  if (error) return {};
  return static_cast<std::uint64_t>(std::distance(begin(open), end(open))) - 1;
}

std::optional<std::uint64_t> mostDescriptors() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return {};
  return limit.rlim_cur;
}

}  // namespace

ProcessLoad processLoad() {
  ProcessLoad load;
  load.processorSeconds = processorSeconds();
  readStatus(load);
  load.descriptors = descriptors();
  load.mostDescriptors = mostDescriptors();
  static const std::optional<double> kStart = load.startedAt;  // the same for good
  load.startedAt = kStart;
  return load;
}

}  // namespace host
