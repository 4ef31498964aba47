#include "twin/controller_order.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "twin/conversions.h"

namespace simulator {
namespace {

/// Ids, each to stand behind those in front of it.
using Sequence = std::vector<std::string>;

std::string idOf(const boost::json::value& controller) {
  return textAt(neededMemberOf(objectAt(controller, "controllers"), "id", "controllers"), "controllers.id");
}

std::vector<Sequence> sequencesOf(const boost::json::array& controllers,
                                  const boost::json::object& ofEngines) {
  std::map<std::string, Sequence> byType;
  for (const auto& each : controllers) {
    const auto& type = neededMemberOf(objectAt(each, "controllers"), "type", "controllers");
    byType[textAt(type, "controllers.type")].push_back(idOf(each));
  }
  std::vector<Sequence> sequences;
  for (auto& entry : byType) sequences.push_back(std::move(entry.second));
  for (const auto& engine : ofEngines) {
    Sequence sequence;
    for (const auto& each : arrayAt(engine.value(), "raids.controllers")) sequence.push_back(idOf(each));
    sequences.push_back(std::move(sequence));
  }
  return sequences;
}

bool mayComeNext(const std::string& id, const std::vector<Sequence>& sequences,
                 const std::set<std::string>& placed) {
  return std::all_of(sequences.begin(), sequences.end(), [&](const Sequence& sequence) {
    const auto end = std::find(sequence.begin(), sequence.end(), id);
    return end == sequence.end() || std::all_of(sequence.begin(), end, [&](const std::string& each) {
             return placed.count(each) != 0;
           });
  });
}

}  // namespace

boost::json::array inOrderOfHandles(const boost::json::array& controllers,
                                    const boost::json::object& ofEngines) {
  const std::vector<Sequence> sequences = sequencesOf(controllers, ofEngines);
  boost::json::array ordered;
  std::set<std::string> placed;
  while (ordered.size() < controllers.size()) {
    const auto next = std::find_if(controllers.begin(), controllers.end(), [&](const auto& each) {
      return placed.count(idOf(each)) == 0 && mayComeNext(idOf(each), sequences, placed);
    });
    if (next == controllers.end()) return controllers;  // the lists are not of one moment
    ordered.push_back(*next);
    placed.insert(idOf(*next));
  }
  return ordered;
}

}  // namespace simulator
