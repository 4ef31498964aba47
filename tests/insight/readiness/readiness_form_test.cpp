#include "readiness/readiness_form.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "insight/readiness/made_past.h"

namespace insight {
namespace {

TEST(ReadinessForm, IsWhatClientsRead) {
  ReadinessReport report;
  report.position = {L"0123456789abcdef", 7, 5, 3};
  report.takenAt = kSmallMachineTakenAt;
  report.historyFromMs = kSmallMachineTakenAt - 1;
  report.severity = Severity::kWarning;
  report.checks = {
      {"no-spare-fits", true, {}}, {"mixed-firmware", false, {}}, {"exposed", true, "Not all is known."}};
  report.exposure = {{"2023-10", {}}, {"2023-11", 1999}};
  report.lines.push_back({"no-spare-fits",
                          Severity::kWarning,
                          {{"disk", L"D", L"SATA N"}},
                          "A sentence.",
                          {{"exposedSeconds", 1}},
                          {{"setDiskSpare", {{"action", L"MARK"}}}}});
  EXPECT_EQ(boost::json::value(formOf(report)), boost::json::parse(R"({
    "severity": "warning",
    "position": {"epoch": "0123456789abcdef", "revision": 7, "structure": 5, "sequence": 3},
    "takenAt": "2023-11-14T22:13:20.000Z",
    "historyFrom": "2023-11-14T22:13:19.999Z",
    "verifiedWithinDays": 30,
    "checks": [{"kind": "no-spare-fits", "state": "found", "reason": null},
               {"kind": "mixed-firmware", "state": "ok", "reason": null},
               {"kind": "exposed", "state": "unknown", "reason": "Not all is known."}],
    "exposure": [{"month": "2023-10", "exposedSeconds": "unknown"}, {"month": "2023-11", "exposedSeconds": 1}],
    "items": [{"kind": "no-spare-fits", "severity": "warning",
               "objects": [{"type": "disk", "id": "D", "name": "SATA N"}],
               "text": "A sentence.", "details": {"exposedSeconds": 1},
               "steps": [{"operation": "setDiskSpare", "arguments": {"action": "MARK"}}]}]
  })"));
}

TEST(ReadinessForm, OfNothingHasNulls) {
  const boost::json::object form = formOf(ReadinessReport());
  EXPECT_TRUE(form.at("takenAt").is_null());
  EXPECT_TRUE(form.at("historyFrom").is_null());
  EXPECT_EQ(form.at("severity"), "ok");
}

}  // namespace
}  // namespace insight
