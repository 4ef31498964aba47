#include "whatif/whatif.h"

#include <string>
#include <utility>

#include "model/words.h"
#include "twin/twin.h"
#include "whatif/course.h"
#include "whatif/known_rates.h"

namespace simulator {
namespace {

constexpr std::uint64_t kMillisecondsPerSecond = 1000;

boost::json::object reference(const char* type, const std::string& id, const std::string& name) {
  return {{"type", type}, {"id", id}, {"name", name}};
}

boost::json::object reference(const Volume& volume) { return reference("volume", volume.id, volume.name); }
boost::json::object reference(const Array& array) { return reference("array", array.id, array.name); }

boost::json::object reference(const EndDevice& disk) {
  return reference("disk", disk.id, std::string(toWord(disk.diskType)) + " " + disk.serialNumber);
}

/// Rounded up, so that no time is promised to be shorter than it is.
std::uint64_t secondsOf(std::uint64_t milliseconds) {
  return (milliseconds + kMillisecondsPerSecond - 1) / kMillisecondsPerSecond;
}

std::string_view wordOf(EventKind kind) {
  switch (kind) {
    case EventKind::FAIL:
      return "fail";
    case EventKind::PULL:
      return "pull";
    case EventKind::WAIT:
      return "wait";
  }
  return "";
}

const EndDevice* diskNamed(const Machine& machine, const std::string& id) {
  for (const auto& entry : machine.devices) {
    if (entry.second.id == id) return &entry.second;
  }
  return nullptr;
}

boost::json::object formOf(const Machine& machine, const EventOutcome& outcome) {
  boost::json::object form{{"event", wordOf(outcome.event.kind)},
                           {"atSeconds", secondsOf(outcome.atMs)},
                           {"happened", outcome.hasHappened}};
  const EndDevice* const disk = diskNamed(machine, outcome.event.disk);
  form["object"] = disk == nullptr ? boost::json::value() : boost::json::value(reference(*disk));
  return form;
}

boost::json::object formOf(const Machine& machine, const StateChange& change) {
  return {{"atSeconds", secondsOf(change.atMs)},
          {"object", reference(machine.volumes.at(change.volume))},
          {"from", change.from},
          {"to", change.to}};
}

boost::json::object formOf(const Machine& machine, const Takeover& takeover) {
  const Array* const array = machine.arrays.find(takeover.array);
  return {{"atSeconds", secondsOf(takeover.atMs)},
          {"object", reference(machine.devices.at(takeover.disk))},
          {"instead", reference(machine.devices.at(takeover.instead))},
          {"array", array == nullptr ? boost::json::value() : boost::json::value(reference(*array))}};
}

boost::json::object formOf(const Machine& machine, const Exposure& exposure) {
  boost::json::object form{{"object", reference(machine.volumes.at(exposure.volume))},
                           {"fromSeconds", secondsOf(exposure.fromMs)},
                           {"already", exposure.isOlder},
                           {"seconds", nullptr}};
  if (exposure.toMs) form["seconds"] = secondsOf(*exposure.toMs - exposure.fromMs);
  return form;
}

template <class Items>
boost::json::array formsOf(const Machine& machine, const Items& items) {
  boost::json::array forms;
  for (const auto& each : items) forms.emplace_back(formOf(machine, each));
  return forms;
}

void append(boost::json::array& sentences, const std::vector<std::string>& further, const char* before = "") {
  for (const std::string& each : further) sentences.emplace_back(before + each);
}

}  // namespace

boost::json::object whatIf(const WhatIfQuestion& question) {
  Twin twin = twinOf(question.answers);
  Machine& machine = twin.machine;
  boost::json::array assumed{"Nothing else happens meanwhile: nobody does anything, and no disk comes in."};
  append(assumed, useKnownRates(machine, question.statistics));
  append(assumed, twin.assumptions);
  append(assumed, twin.differences, "Not as it is told: ");
  Course course(machine);
  for (const AskedEvent& event : question.events) course.let(event);
  course.goOn();
  boost::json::array lost;
  for (const Handle volume : course.lost()) lost.emplace_back(reference(machine.volumes.at(volume)));
  return {
      {"events", formsOf(machine, course.outcomes())},     {"changes", formsOf(machine, course.changes())},
      {"takesOver", formsOf(machine, course.takeovers())}, {"lost", std::move(lost)},
      {"exposure", formsOf(machine, course.exposures())},  {"assumed", std::move(assumed)}};
}

}  // namespace simulator
