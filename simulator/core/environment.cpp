#include "core/environment.h"

#include <cstdlib>

#include "scenario/scenario.h"

namespace simulator {
namespace {

constexpr char kScenario[] = "VEXL2_SCENARIO";
constexpr char kState[] = "VEXL2_STATE";
constexpr char kClockSpeed[] = "VEXL2_CLOCK_SPEED";
constexpr char kEventWaitCap[] = "VEXL2_EVENT_WAIT_CAP";

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

/// The number that the variable holds; `fallback` when it is not set.
std::uint32_t number(const char* name, std::uint32_t fallback) {
  constexpr std::size_t kMaxDigits = 6;
  const std::string text = variable(name);
  if (text.empty()) return fallback;
  if (text.size() > kMaxDigits || text.find_first_not_of("0123456789") != std::string::npos) {
    throw ScenarioError(std::string(name) + ": \"" + text + "\" is no whole number up to 999999");
  }
  return static_cast<std::uint32_t>(std::stoul(text));
}

}  // namespace

Environment readEnvironment() {
  Environment environment;
  environment.scenarioPath = variable(kScenario);
  environment.statePath = variable(kState);
  environment.clockSpeed = number(kClockSpeed, environment.clockSpeed);
  environment.eventWaitCapMs = number(kEventWaitCap, environment.eventWaitCapMs);
  return environment;
}

Machine scenarioMachine(const Environment& environment) {
  if (!environment.scenarioPath.empty()) return loadScenario(environment.scenarioPath);
  return readScenario(embeddedScenario());
}

}  // namespace simulator
