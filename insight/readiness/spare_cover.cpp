#include "readiness/readiness_checks.h"
#include "view/object_form.h"
#include "view/object_path.h"

namespace insight {

namespace {

/// One that has gone already fails no more.
bool canFail(const DiskView& disk) { return disk.state != L"FAILED" && disk.state != L"MISSING"; }

}  // namespace

NextStep stepOfMarkingASpare() { return {"setDiskSpare", {{"action", L"MARK"}}}; }

/// Health knows which spare fits.
CheckFindings lookForSpares(const ReadinessLook& look) {
  CheckFindings findings;
  for (const Cause* const cause : look.causes.withoutSpare()) {
    ReadinessLine line;
    line.severity = Severity::kWarning;
    for (const DiskView* const disk : look.machine().membersOf(cause->object.id)) {
      if (canFail(*disk)) line.objects.push_back(refOf(*disk));
    }
    if (line.objects.empty()) continue;
    line.text = cause->text;
    line.details = {{"array", formOf(cause->object)}, {"volumes", formOf(cause->atRisk)}};
    line.steps = cause->steps;
    findings.lines.push_back(std::move(line));
  }
  return findings;
}

}  // namespace insight
