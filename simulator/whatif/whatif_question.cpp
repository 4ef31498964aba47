#include "whatif/whatif_question.h"

#include "twin/conversions.h"
#include "twin/twin_error.h"

namespace simulator {
namespace {

AskedEvent eventOf(const boost::json::value& json, const std::string& place) {
  const boost::json::object& event = objectAt(json, place);
  if (event.size() != 1) throw TwinError(place + ": is not one thing");
  const auto& [key, value] = *event.begin();
  if (key == "fail") return {EventKind::FAIL, textAt(value, place), 0};
  if (key == "pull") return {EventKind::PULL, textAt(value, place), 0};
  if (key == "wait") return {EventKind::WAIT, "", numberAt(value, place)};
  throw TwinError(place + ": nothing of this kind happens");
}

}  // namespace

WhatIfQuestion whatIfQuestionOf(const boost::json::value& json) {
  const boost::json::object& object = objectAt(json, "the question");
  WhatIfQuestion question;
  question.answers = objectAt(neededMemberOf(object, "answers", "the question"), "answers");
  question.statistics = arrayAt(neededMemberOf(object, "statistics", "the question"), "statistics");
  for (const auto& each : arrayAt(neededMemberOf(object, "events", "the question"), "events")) {
    question.events.push_back(eventOf(each, "events[" + std::to_string(question.events.size()) + "]"));
  }
  return question;
}

}  // namespace simulator
