#include "actions/action_form.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

namespace insight {
namespace {

TEST(ActionForm, TellsVerdictsAndNeeds) {
  Operation operation;
  operation.id = L"verify";
  operation.effect = L"changes";
  operation.role = L"operate";
  OperationField repair;
  repair.name = L"repair";
  repair.type = L"boolean";
  repair.help = L"Help.";
  const Action needing{&operation, L"action", L"START", Verdict::kNeeds, {}, {}, {&repair}};
  const Action refused{&operation, L"action", L"CANCEL", Verdict::kRefused, L"ID", L"Words", {}};
  EXPECT_EQ(boost::json::value(formOf({"volume", L"7", L"Data"}, {needing, refused})), boost::json::parse(R"({
    "object": {"type": "volume", "id": "7", "name": "Data"},
    "actions": [
      {"operation": "verify", "effect": "changes", "role": "operate", "argument": "action", "word": "START",
       "verdict": "needs", "errorId": null, "words": null,
       "needs": [{"name": "repair", "type": "boolean", "help": "Help."}]},
      {"operation": "verify", "effect": "changes", "role": "operate", "argument": "action", "word": "CANCEL",
       "verdict": "refused", "errorId": "ID", "words": "Words", "needs": []}],
    "libraryDecides": true})"));
}

TEST(ActionForm, TellsAPageOfCandidates) {
  const Candidate good{L"D", ObjectRef{"disk", L"D", L"SATA 1"}, true, {}, {}};
  const Candidate bad{L"RAID_0", {}, false, L"ID", L"Words"};
  EXPECT_EQ(boost::json::value(formOf({good, bad}, SizeBounds{1, 2}, "c2")), boost::json::parse(R"({
    "items": [
      {"value": "D", "object": {"type": "disk", "id": "D", "name": "SATA 1"}, "allowed": true, "errorId": null,
       "words": null},
      {"value": "RAID_0", "object": null, "allowed": false, "errorId": "ID", "words": "Words"}],
    "next": "c2", "size": {"least": "1", "most": "2", "unit": "MiB"}, "libraryDecides": true})"));
  EXPECT_TRUE(formOf({}, {}, {}).at("next").is_null());
  EXPECT_TRUE(formOf({}, {}, {}).at("size").is_null());
}

}  // namespace
}  // namespace insight
