#ifndef MIRN_TESTS_INSIGHT_MACHINE_PLAN_PROOF_H
#define MIRN_TESTS_INSIGHT_MACHINE_PLAN_PROOF_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "insight/machine/random_change.h"
#include "insight/machine/served_simulation.h"
#include "module/machine_picture.h"
#include "plan/operation_effects.h"
#include "plan/plan.h"

/// Holds plans against what the changes then do to the simulated machine.
class PlanProof {
 public:
  PlanProof(ServedSimulation& served, std::uint32_t seed);

  /// Plans one change of the machine of a scenario, does it, and tells what the plan does not: nothing where
  /// it is right.
  std::vector<std::string> judge(const std::string& scenario);

  /// What was seen, so that nobody takes a proof for thorough that isn't: "done", "refused", "work by
  /// itself", each operation that was done, and what was told and did not show.
  const std::map<std::string, std::size_t>& tally() const { return m_tally; }
  /// "renameVolume {...}", what was asked for last.
  const std::string& asked() const { return m_asked; }

 private:
  MachinePicture picture();
  bool isRefusedAhead(const AskedAtRandom& asked);
  bool carryOut(const AskedAtRandom& asked);

  ServedSimulation& m_served;
  const ovra::data_transfer::ServiceObject m_description;
  const std::vector<insight::Operation> m_operations;
  const std::map<std::wstring, insight::OperationEffects> m_effects;
  RandomChange m_changes;
  std::map<std::string, std::size_t> m_tally;
  std::string m_asked;
};

#endif
