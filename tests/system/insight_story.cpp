#include "system/insight_story.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace host {

namespace {

constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::milliseconds kPause{5};

std::string wordOf(const boost::json::object& form, const char* key) {
  return form.at(key).is_string() ? std::string(form.at(key).as_string()) : "-";
}

std::string nameOf(const boost::json::object& form) {
  return form.at("object").is_object() ? wordOf(form.at("object").as_object(), "name") : "-";
}

}  // namespace

std::vector<std::string> linesOf(const boost::json::array& items,
                                 const std::function<std::string(const boost::json::object&)>& lineOf) {
  std::vector<std::string> lines;
  for (const auto& each : items) lines.push_back(lineOf(each.as_object()));
  return lines;
}

bool InsightStory::comesTo(const std::function<bool()>& isSo) {
  const auto deadline = std::chrono::steady_clock::now() + kPatience;
  while (!isSo()) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

boost::json::object InsightStory::answer(const std::string& target) {
  const Reply reply = get(target);
  EXPECT_EQ(reply.status, 200u) << target << ": " << reply.body;
  return reply.body.is_object() ? reply.body.as_object() : boost::json::object();
}

boost::json::array InsightStory::items(const std::string& target, std::size_t limit) {
  const std::string page =
      target + (target.find('?') == std::string::npos ? '?' : '&') + "limit=" + std::to_string(limit);
  boost::json::array all;
  std::string next;
  do {
    const boost::json::object found = answer(next.empty() ? page : page + "&cursor=" + next);
    if (!found.contains("items")) break;
    const boost::json::array& some = found.at("items").as_array();
    EXPECT_LE(some.size(), limit);
    all.insert(all.end(), some.begin(), some.end());
    next = found.at("next").is_null() ? std::string() : text(found, "next");
  } while (!next.empty());
  return all;
}

Story::Words InsightStory::alarms(const std::string& state) {
  return linesOf(items("alarms?state=" + state), [](const boost::json::object& each) {
    return wordOf(each, "kind") + " of " + nameOf(each);
  });
}

Story::Words InsightStory::jobs(const std::string& state) {
  return linesOf(items("jobs?state=" + state), [](const boost::json::object& each) {
    return wordOf(each, "kind") + " of " + nameOf(each) + ": " + wordOf(each, "outcome");
  });
}

Story::Words InsightStory::entries(const std::string& kind, const std::string& query) {
  Words lines = linesOf(items("history?kind=" + kind + query), [](const boost::json::object& each) {
    return wordOf(each, "operation") + " of " + nameOf(each) + ": " + wordOf(each, "outcome");
  });
  std::reverse(lines.begin(), lines.end());
  return lines;
}

boost::json::object InsightStory::alarm(const std::string& line) {
  const auto isThere = [&] {
    const Words open = alarms();
    return std::find(open.begin(), open.end(), line) != open.end();
  };
  EXPECT_TRUE(comesTo(isThere)) << "there is no alarm " << line;
  for (const auto& each : items("alarms")) {
    const boost::json::object& form = each.as_object();
    if (wordOf(form, "kind") + " of " + nameOf(form) == line) return form;
  }
  return {};
}

boost::json::object InsightStory::onlyJob(const std::string& state) {
  EXPECT_TRUE(comesTo([&] { return items("jobs?state=" + state).size() == 1; })) << "there is no job";
  const boost::json::array found = items("jobs?state=" + state);
  return found.empty() ? boost::json::object() : found.front().as_object();
}

}  // namespace host
