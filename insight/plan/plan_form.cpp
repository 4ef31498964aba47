#include "plan/plan_form.h"

#include <boost/json/array.hpp>
#include <string>

#include "text.h"
#include "view/object_form.h"

namespace insight {

namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

/// Without the members that it has not.
object formOf(const PlannedObject& planned) {
  object form = formOf(planned.object);
  if (planned.object.name.empty()) form.erase("name");
  if (!planned.level.empty()) form["level"] = wideToUtf8(planned.level);
  if (!planned.members.empty()) form["members"] = formOf(planned.members);
  if (planned.aboutBytes) form["aboutTotalBytes"] = std::to_string(*planned.aboutBytes);
  return form;
}

object formOf(const PlannedEffect& effect) {
  array objects;
  for (const PlannedObject& each : effect.objects) objects.push_back(formOf(each));
  return {
      {"fate", wideToUtf8(effect.fate)}, {"text", wideToUtf8(effect.text)}, {"objects", std::move(objects)}};
}

object formOf(const PlannedLoss& loss) {
  return {{"object", formOf(loss.object)}, {"text", wideToUtf8(loss.text)}};
}

object formOf(const PlannedWork& work) {
  return {{"kind", work.kind},
          {"object", formOf(work.object)},
          {"likelySeconds", work.likelySeconds ? value(*work.likelySeconds) : value("unknown")},
          {"jobs", work.jobs}};
}

object formOf(const PlannedRedundancy& redundancy) {
  return {{"object", formOf(redundancy.object)},
          {"mayFailNow", redundancy.now ? value(*redundancy.now) : value(nullptr)},
          {"mayFailMeanwhile", redundancy.meanwhile}};
}

template <class Part>
array formsOf(const std::vector<Part>& parts) {
  array forms;
  for (const Part& each : parts) forms.push_back(formOf(each));
  return forms;
}

std::string structureOf(const ovra::PluginPosition& position) {
  return '"' + wideToUtf8(position.epoch) + '.' + std::to_string(position.structure) + '"';
}

}  // namespace

object formOf(const Plan& plan) {
  array warnings;
  for (const std::wstring& each : plan.warnings) warnings.emplace_back(wideToUtf8(each));
  return {{"structure", structureOf(plan.position)},
          {"effects", formsOf(plan.effects)},
          {"lost", formsOf(plan.lost)},
          {"work", formsOf(plan.work)},
          {"redundancy", formsOf(plan.redundancy)},
          {"warnings", std::move(warnings)},
          {"libraryDecides", true}};
}

}  // namespace insight
