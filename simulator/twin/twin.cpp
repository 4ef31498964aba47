#include "twin/twin.h"

#include "scenario/parse.h"
#include "twin/conversions.h"
#include "twin/derived_fields.h"
#include "twin/draft.h"
#include "twin/guesses.h"
#include "twin/twin_error.h"

namespace simulator {
namespace {

Machine read(const Draft& draft) {
  try {
    return readParsedScenario(draft.scenario());
  } catch (const ScenarioError& error) {
    throw TwinError("no machine of the simulator is like this: " + std::string(error.what()));
  }
}

/// An array of the same controller that the spare has not joined; null where there is none.
const Array* otherArray(const Machine& machine, const EndDevice& joined) {
  for (const Handle handle : machine.controllers.at(joined.controller).arrays) {
    if (handle != joined.array) return &machine.arrays.at(handle);
  }
  return nullptr;
}

/// A spare that would take a lost member's place at once, and did not, waits for another array. False when
/// there is none such.
bool dedicateSpare(Draft& draft, const Machine& machine, std::vector<std::string>& assumptions) {
  for (auto& each : draft.devices) {
    boost::json::object& device = each.get_object();
    if (!device.contains("spare") || device.contains("spareFor")) continue;
    for (const auto& entry : machine.devices) {
      const EndDevice& made = entry.second;
      if (boost::json::value(made.id) != device.at("id") || made.array == 0) continue;
      const Array* const other = otherArray(machine, made);
      if (other == nullptr) continue;
      device["spareFor"] = other->id;
      assumptions.push_back("The spare " + made.serialNumber + " waits for the array " + other->name +
                            ", which no list tells.");
      return true;
    }
  }
  return false;
}

}  // namespace

Twin twinOf(const boost::json::object& given) {
  const Answers answers(given);
  Draft draft = draftOf(answers);
  Twin twin;
  twin.assumptions = completeByGuesses(draft, answers);
  twin.machine = read(draft);
  while (dedicateSpare(draft, twin.machine, twin.assumptions)) twin.machine = read(draft);
  twin.differences = differencesOf(twin.machine, answers);
  return twin;
}

}  // namespace simulator
