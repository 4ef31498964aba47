#ifndef MIRN_TESTS_INSIGHT_MACHINE_TOLERANCE_PROOF_H
#define MIRN_TESTS_INSIGHT_MACHINE_TOLERANCE_PROOF_H

#include <map>
#include <string>

#include "model/machine.h"
#include "view/machine_view.h"

/// Holds what is claimed of volumes against the machine itself: fails every set of disks, each from the same
/// beginning, and looks whether the volume still serves.
class ToleranceProof {
 public:
  /// The first claim that is wrong, in words; nothing where all are right. `view` shows the machine of
  /// the text `scenario`.
  std::string judge(const std::string& scenario, const insight::MachineView& view);

  /// What was seen, so that nobody takes a proof for thorough that isn't: "exact RAID_5", "in doubt", "sets".
  const std::map<std::string, unsigned long>& tally() const { return m_tally; }

 private:
  std::string judge(const simulator::Machine& machine, const simulator::Volume& volume,
                    const insight::MachineView& view);
  /// Whether the volume serves when any `count` of its disks have failed, one after the other.
  bool servesWithoutAny(const simulator::Machine& machine, const simulator::Volume& volume,
                        std::uint64_t count);

  std::string m_scenario;  ///< Each trial begins from it anew.
  std::map<std::string, unsigned long> m_tally;
};

#endif
