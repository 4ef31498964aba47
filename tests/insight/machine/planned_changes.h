#ifndef MIRN_TESTS_INSIGHT_MACHINE_PLANNED_CHANGES_H
#define MIRN_TESTS_INSIGHT_MACHINE_PLANNED_CHANGES_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "module/machine_picture.h"
#include "plan/plan.h"

/// A plan beside the machine before and after its change. All three outlive this.
class PlannedChanges {
 public:
  PlannedChanges(const insight::Plan& plan, const MachinePicture& before, const MachinePicture& after)
      : m_plan(plan), m_before(before), m_after(after) {}

  /// Work has begun, or a disk has become a member, of which the plan does not tell.
  bool startedByItself() const;

  /// What has happened and is not told, or is told to come or to go and did not.
  std::vector<std::string> faults() const;

  /// The texts of what is told and does not show.
  std::set<std::string> unseen() const;

  /// The same of sizes, once all work is over. `later` shows the machine then.
  std::vector<std::string> faultsOfSizes(const MachinePicture& later) const;

 private:
  using Ids = std::set<std::wstring>;

  Ids told(const std::wstring& type, const std::set<std::wstring>& fates) const;
  void judgeComing(const std::wstring& type, const Ids& came, std::vector<std::string>& faults) const;
  bool beganWork() const;
  bool tookDiskIn() const;
  void judgeWork(std::vector<std::string>& faults) const;

  const insight::Plan& m_plan;
  const MachinePicture& m_before;
  const MachinePicture& m_after;
};

#endif
