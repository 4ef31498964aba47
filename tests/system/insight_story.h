#ifndef MIRN_TESTS_SYSTEM_INSIGHT_STORY_H
#define MIRN_TESTS_SYSTEM_INSIGHT_STORY_H

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <functional>
#include <string>

#include "system/story.h"

namespace host {

/// A story of which insight tells: what it tells comes a moment after what befalls.
class InsightStory : public Story {
 protected:
  /// Whether it is so within a while.
  static bool comesTo(const std::function<bool()>& isSo);

  /// An answer that goes well.
  boost::json::object answer(const std::string& target);
  /// The items of all pages under a target, of `limit` at most each.
  boost::json::array items(const std::string& target, std::size_t limit = 1000);

  /// "KIND of NAME" of each alarm in this state.
  Words alarms(const std::string& state = "open");
  /// "KIND of NAME: OUTCOME" of each job in this state.
  Words jobs(const std::string& state = "running");
  /// "OPERATION of NAME: OUTCOME" of each entry of a kind, the oldest first.
  Words entries(const std::string& kind, const std::string& query = "");

  /// The open alarm of this kind; waits for it.
  boost::json::object alarm(const std::string& line);
  /// The only job in this state; waits for it.
  boost::json::object onlyJob(const std::string& state);
};

/// As `text` told of each.
std::vector<std::string> linesOf(const boost::json::array& items,
                                 const std::function<std::string(const boost::json::object&)>& lineOf);

}  // namespace host

#endif
