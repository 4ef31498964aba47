#include "system/story.h"

#include <gmock/gmock.h>

#include <boost/json/serialize.hpp>

namespace host {

namespace {

constexpr std::uint64_t kMillisecondsPerSecond = 1000;
constexpr std::uint32_t kAlways = 0xFFFFFFFF;
constexpr std::uint32_t kFailed = 15;
constexpr char kEventTime[] = "[0-9]{2}/[0-9]{2}/[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2} [AP]M";

std::string textOf(const boost::json::object& body) {
  return body.empty() ? std::string() : boost::json::serialize(body);
}

std::string target(const std::string& key, const boost::json::object& object, const std::string& action) {
  const std::string path = key + "/" + std::string(object.at("id").as_string());
  return action.empty() ? path : path + "/" + action;
}

}  // namespace

void Story::begin(const std::string& scenario, std::vector<std::string> arguments) {
  std::map<std::string, std::string> environment{{"VEXL2_CLOCK_SPEED", "0"}};
  if (!scenario.empty()) environment["VEXL2_SCENARIO"] = MIRN_TEST_SCENARIOS "/" + scenario;
  arguments.emplace_back("--simulator-controls");
  serve(environment, arguments);
  silenceMonitor();
}

/// The monitor looks at the machine whenever its wait ends well: from now on none does. After two more calls
/// the last look is over.
void Story::silenceMonitor() {
  constexpr std::uint32_t kPauseMs = 10;
  control("delay-calls", {{"operation", "VexEventWait"}, {"count", kAlways}, {"milliseconds", kPauseMs}});
  control("fail-calls", {{"operation", "VexEventWait"}, {"count", kAlways}, {"status", kFailed}});
  const std::uint64_t calls = callsOf("VexEventWait");
  while (callsOf("VexEventWait") < calls + 2) {
  }
}

void Story::TearDown() {
  if (!m_host || m_host->hasExited()) return;
  const Reply check = control("check");
  EXPECT_EQ(check.status, 204u) << check.body;
  stop();
}

SystemHost::Reply Story::control(const std::string& name, const boost::json::object& arguments) {
  return request("POST", "simulator/" + name, textOf(arguments));
}

void Story::befall(const std::string& incident, const std::string& serialNumber) {
  const Reply reply = control(incident, {{"disk", serialNumber}});
  EXPECT_EQ(reply.status, 204u) << incident << ' ' << serialNumber << ": " << reply.body;
  rescan();
}

void Story::pass(std::uint64_t seconds) {
  const Reply reply = control("advance-clock", {{"milliseconds", seconds * kMillisecondsPerSecond}});
  EXPECT_EQ(reply.status, 204u) << reply.body;
  rescan();
}

void Story::rescan() { done("POST", "mirn/rescan"); }

std::uint64_t Story::callsOf(const std::string& operation) {
  return control("count-calls", {{"operation", operation}}).body.at("calls").to_number<std::uint64_t>();
}

boost::json::value Story::done(const std::string& method, const std::string& target,
                               const boost::json::object& body) {
  const Reply reply = request(method, target, textOf(body));
  EXPECT_EQ(reply.status, reply.body.is_null() ? 204u : 200u)
      << method << ' ' << target << ": " << reply.body;
  return reply.body;
}

std::string Story::refusal(const std::string& method, const std::string& target,
                           const boost::json::object& body) {
  const Reply reply = request(method, target, textOf(body));
  EXPECT_GE(reply.status, 400u) << method << ' ' << target << ": " << reply.body;
  EXPECT_EQ(reply.type, "application/problem+json");
  return reply.status < 400 ? std::string() : text(reply.body.as_object(), "errorId");
}

std::string Story::ofVolume(const std::string& name, const std::string& action) {
  return target("mirn/volumes", volume(name), action);
}

std::string Story::ofDisk(const std::string& serialNumber, const std::string& action) {
  return target("mirn/disks", disk(serialNumber), action);
}

boost::json::array Story::idsOf(const Words& serialNumbers) {
  boost::json::array ids;
  for (const std::string& serialNumber : serialNumbers) ids.emplace_back(idOf(serialNumber));
  return ids;
}

Story::Words Story::journal() {
  Words lines;
  for (const boost::json::value& value : list("mirn/events?time=86400")) {
    const boost::json::object& event = value.as_object();
    EXPECT_THAT(text(event, "creation_time"), testing::MatchesRegex(kEventTime));
    lines.push_back(text(event, "event_type") + " of " + text(event, "event_source_name"));
  }
  return lines;
}

}  // namespace host
