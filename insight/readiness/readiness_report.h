#ifndef MIRN_INSIGHT_READINESS_READINESS_REPORT_H
#define MIRN_INSIGHT_READINESS_READINESS_REPORT_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "health/cause.h"
#include "health/severity.h"
#include "readiness/exposure.h"
#include "readiness/machine_past.h"
#include "view/machine_view.h"
#include "view/object_ref.h"

namespace insight {

constexpr std::int64_t kUsualVerifiedWithinDays = 30;

/// What is known when somebody asks how ready a machine is. Moments are milliseconds since 1970, UTC.
struct ReadinessFacts {
  const MachineView& machine;
  std::int64_t nowMs = 0;
  std::int64_t verifiedWithinDays = kUsualVerifiedWithinDays;
  std::optional<MachinePast> past = {};
  std::string whyNoPast = {};  ///< Where there is none: one sentence, UTF-8.
};

/// One thing that makes the next fault worse than it need be. Plain value.
struct ReadinessLine {
  std::string kind;  ///< That of its check; "picture-old" where the picture is.
  Severity severity = Severity::kInfo;
  std::vector<ObjectRef> objects;
  std::string text;             ///< One sentence for people, UTF-8.
  boost::json::object details;  ///< What the sentence stands on, by kind.
  std::vector<NextStep> steps;
};

/// How a check came out.
struct CheckResult {
  std::string kind;
  bool hasLines = false;
  std::string doubt;  ///< Why not all of it is known, one sentence; empty where it is.
};

/// How ready the machine is for the next fault, as it stands at one position. Plain value.
struct ReadinessReport {
  ovra::PluginPosition position;
  std::optional<std::uint64_t> takenAt;  ///< Nothing before the first picture.
  std::optional<std::int64_t> historyFromMs;
  std::int64_t verifiedWithinDays = kUsualVerifiedWithinDays;
  Severity severity = Severity::kOk;   ///< The worst of all lines.
  std::vector<CheckResult> checks;     ///< In the order of their table.
  std::vector<ExposedMonth> exposure;  ///< The last twelve months, this one last.
  std::vector<ReadinessLine> lines;    ///< The worst first, then in the order of the checks.
};

ReadinessReport readinessOf(const ReadinessFacts& facts);

}  // namespace insight

#endif
