#include "plan/plan_form.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace insight {

namespace {

TEST(PlanForm, HasAllMembersAndOfObjectsThoseThatTheyHave) {
  Plan plan;
  plan.position = {L"0123456789abcdef", 7, 5, 3};
  const ObjectRef disk{"disk", L"D", L"SATA N-D"};
  const ObjectRef volume{"volume", {}, L"New"};
  plan.effects = {{L"comes", L"It comes.", {{volume, L"RAID_0", {disk}, 1048576}}, false},
                  {L"comes", L"Its array.", {{{"array", {}, {}}, {}, {}, {}}}, true}};
  plan.lost = {{disk, L"everything on SATA N-D"}};
  plan.work = {{"migrate", volume, 60, 2}, {"verify", volume, {}, 0}};
  plan.redundancy = {{volume, {}, 0}, {volume, 2, 1}};
  plan.warnings = {L"Mind it."};
  const auto expected = boost::json::parse(R"({
    "structure": "\"0123456789abcdef.5\"",
    "effects": [
      {"fate": "comes", "text": "It comes.", "objects": [
        {"type": "volume", "id": null, "name": "New", "level": "RAID_0",
         "members": [{"type": "disk", "id": "D", "name": "SATA N-D"}], "aboutTotalBytes": "1048576"}]},
      {"fate": "comes", "text": "Its array.", "objects": [{"type": "array", "id": null}]}],
    "lost": [{"object": {"type": "disk", "id": "D", "name": "SATA N-D"}, "text": "everything on SATA N-D"}],
    "work": [
      {"kind": "migrate", "object": {"type": "volume", "id": null, "name": "New"}, "likelySeconds": 60, "jobs": 2},
      {"kind": "verify", "object": {"type": "volume", "id": null, "name": "New"}, "likelySeconds": "unknown",
       "jobs": 0}],
    "redundancy": [
      {"object": {"type": "volume", "id": null, "name": "New"}, "mayFailNow": null, "mayFailMeanwhile": 0},
      {"object": {"type": "volume", "id": null, "name": "New"}, "mayFailNow": 2, "mayFailMeanwhile": 1}],
    "warnings": ["Mind it."],
    "libraryDecides": true})");
  EXPECT_EQ(boost::json::value(formOf(plan)), expected);
}

}  // namespace

}  // namespace insight
