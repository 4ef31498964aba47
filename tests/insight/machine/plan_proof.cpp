#include "insight/machine/plan_proof.h"

#include <algorithm>
#include <stdexcept>

#include "insight/machine/planned_changes.h"
#include "plan/affected_objects.h"
#include "service_exceptions.h"
#include "support/text_form.h"
#include "text.h"
#include "vexl2_simulator.h"

namespace {

constexpr std::uint64_t kUntilAllWorkIsOver = 1'000'000'000;  // milliseconds

/// A rebuild takes one of the lost disks' place, and nobody knows ahead which.
bool isOneOfSeveral(const AskedAtRandom& asked, const insight::MachineView& machine) {
  if (asked.operation->id != L"rebuildVolume") return false;
  const insight::VolumeView* const volume = machine.volume(asked.segments.front());
  const auto members = machine.membersOf(volume->arrayId);
  return std::count_if(members.begin(), members.end(),
                       [](const auto* disk) { return insight::isLostMember(*disk); }) > 1;
}

}  // namespace

PlanProof::PlanProof(ServedSimulation& served, std::uint32_t seed)
    : m_served(served),
      m_description(served.as<ovra::described_plugin_1>().describe()),
      m_operations(insight::operationsOf(m_description)),
      m_effects(insight::effectsOf(m_description)),
      m_changes(seed, m_operations) {}

MachinePicture PlanProof::picture() {
  m_served.rescan();
  return MachinePicture(m_served.as<ovra::watched_plugin_1>().picture());
}

bool PlanProof::isRefusedAhead(const AskedAtRandom& asked) {
  try {
    m_served.as<ovra::rehearsed_plugin_1>().rehearse(asked.operation->key, asked.operation->method,
                                                     asked.segments, {}, asked.body);
    return false;
  } catch (const ovra::common::IErrorIdException&) {
    return true;
  }
}

bool PlanProof::carryOut(const AskedAtRandom& asked) {
  try {
    m_served.plugin().handleRequest(asked.operation->key, asked.operation->method, asked.segments, {},
                                    asked.body);
    return true;
  } catch (const ovra::common::IErrorIdException&) {
    return false;
  }
}

std::vector<std::string> PlanProof::judge(const std::string& scenario) {
  m_served.load(scenario);
  const insight::MachineView machine = m_served.view();
  const std::optional<AskedAtRandom> asked = m_changes.on(machine);
  m_asked = asked ? wideToUtf8(asked->operation->id) + ' ' + textForm(asked->body) : "nothing";
  if (!asked) {
    ++m_tally["nothing to do"];
    return {};
  }
  const std::string operation = wideToUtf8(asked->operation->id);
  if (isRefusedAhead(*asked)) {
    ++m_tally["refused ahead: " + operation];
    return {};
  }
  const insight::RequestArguments request(*asked->operation, asked->segments, asked->body);
  const insight::Plan plan = insight::planOf(request, m_effects.at(asked->operation->id), machine, {});
  const MachinePicture before = picture();
  if (!carryOut(*asked)) {
    ++m_tally["refused"];
    ++m_tally["refused: " + operation];
    return {};
  }
  const MachinePicture after = picture();
  if (isOneOfSeveral(*asked, machine)) {
    ++m_tally["one of several lost disks"];
    return {};
  }
  const PlannedChanges changes(plan, before, after);
  if (changes.startedByItself()) {
    ++m_tally["work by itself"];
    return {};
  }
  ++m_tally["done"];
  ++m_tally["done: " + operation];
  const std::size_t unseen = changes.unseen().size();
  if (unseen > 0) m_tally["told and not seen: " + operation] += unseen;
  std::vector<std::string> faults = changes.faults();
  if (VexSimAdvanceClock(kUntilAllWorkIsOver) != VEX_STATUS_SUCCESS)
    throw std::runtime_error("the clock stands");
  for (std::string& fault : changes.faultsOfSizes(picture())) faults.push_back(std::move(fault));
  return faults;
}
