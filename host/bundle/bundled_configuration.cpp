#include "bundle/bundled_configuration.h"

#include <chrono>
#include <cstddef>

namespace host {

namespace {

constexpr double kMillisecondsPerSecond = 1000;

struct CountRow {
  const char* name;
  std::size_t Limits::*value;
};
constexpr CountRow kCounts[] = {
    {"read-workers", &Limits::readWorkers},
    {"change-workers", &Limits::changeWorkers},
    {"max-waiting", &Limits::waitingCalls},
    {"max-waiting-of-one", &Limits::waitingCallsOfOne},
    {"max-connections", &Limits::connections},
    {"max-connections-of-one", &Limits::connectionsOfOne},
    {"max-pipelined", &Limits::pipelinedRequests},
    {"max-header", &Limits::headerBytes},
    {"max-header-line", &Limits::headerLineBytes},
    {"max-fields", &Limits::headerFields},
    {"max-target", &Limits::targetBytes},
    {"max-segments", &Limits::targetSegments},
    {"max-parameters", &Limits::targetParameters},
    {"max-body", &Limits::bodyBytes},
    {"max-depth", &Limits::bodyDepth},
    {"max-values", &Limits::bodyValues},
    {"max-kept", &Limits::keptBytes},
    {"max-watching", &Limits::waitingForChange},
    {"max-listeners", &Limits::listeners},
};

struct TimeRow {
  const char* name;
  std::chrono::milliseconds Limits::*value;
};
constexpr TimeRow kTimes[] = {
    {"header-timeout", &Limits::headerTime}, {"body-timeout", &Limits::bodyTime},
    {"write-timeout", &Limits::writeTime},   {"idle-timeout", &Limits::idleTime},
    {"drain-timeout", &Limits::drainTime},
};

struct SwitchRow {
  const char* name;
  bool Options::*value;
};
constexpr SwitchRow kSwitches[] = {
    {"insecure", &Options::insecure},
    {"no-token-in-url", &Options::noTokenInUrl},
    {"log-requests", &Options::logRequests},
    {"simulator-controls", &Options::simulatorControls},
};

}  // namespace

boost::json::object bundledConfiguration(const Options& options) {
  boost::json::object form{{"port", options.port}, {"threads", options.threads}};
  for (const CountRow& row : kCounts) form[row.name] = options.limits.*row.value;
  for (const TimeRow& row : kTimes) {
    const auto milliseconds = static_cast<double>((options.limits.*row.value).count());
    form[row.name] = milliseconds / kMillisecondsPerSecond;
  }
  for (const SwitchRow& row : kSwitches) form[row.name] = options.*row.value;
  return form;
}

}  // namespace host
