#include "catalogue_form.h"

#include <gtest/gtest.h>

#include <map>

#include "catalogue.h"
#include "http_method.h"
#include "schema_names.h"
#include "support/text_form.h"

namespace {

using ovra::data_transfer::ServiceObject;
using ovra::request_validator::FieldPresence;
using ovra::request_validator::FieldType;

/// A row that has nothing but what each has.
RouteRow plainRow() {
  return {RouteId::kListVolumes, L"listThings",   {L"", L"things"}, HttpMethod::kGet, L"things", L"",
          L"Lists them.",        L"All of them.", Effect::kRead,    Role::kObserve,   {}};
}

std::string textOf(const RouteRow& row, const wchar_t* key) { return textForm(formOf(row).member(key)); }

TEST(CatalogueForm, TellsARouteWithoutWhatDoesNotApply) {
  EXPECT_EQ(
      textForm(formOf(plainRow())),
      "{arguments: [], body: [], bodyRule: \"ignored\", description: \"All of them.\", effect: \"read\", "
      "effects: [], id: \"listThings\", key: \"mirn/things\", method: \"GET\", noun: \"\", "
      "operations: [], path: \"mirn/things\", query: [], refusals: [], role: \"observe\", "
      "summary: \"Lists them.\", verb: \"things\", work: []}");
}

TEST(CatalogueForm, TellsTheNamesInThePathWithTheirTypes) {
  RouteRow row = plainRow();
  row.path = L"{volumeId}/of/{arrayId}";
  EXPECT_EQ(textOf(row, L"path"), "\"mirn/things/{volumeId}/of/{arrayId}\"");
  EXPECT_EQ(textOf(row, L"arguments"),
            "[{name: \"volumeId\", refersTo: \"volume\"}, {name: \"arrayId\", refersTo: \"array\"}]");
}

TEST(CatalogueForm, TellsTheMethodByItsName) {
  RouteRow row = plainRow();
  const std::map<std::int32_t, std::string> names = {{HttpMethod::kGet, "\"GET\""},
                                                     {HttpMethod::kPost, "\"POST\""},
                                                     {HttpMethod::kPut, "\"PUT\""},
                                                     {HttpMethod::kDelete, "\"DELETE\""}};
  for (const auto& [method, name] : names) {
    row.method = method;
    EXPECT_EQ(textOf(row, L"method"), name);
  }
}

TEST(CatalogueForm, TellsWhatBecomesOfABody) {
  RouteRow row = plainRow();
  const std::map<Judgement, std::string> rules = {{Judgement::kQuery, "\"ignored\""},
                                                  {Judgement::kNoBodyThenQuery, "\"none\""},
                                                  {Judgement::kQueryThenNoBody, "\"none\""},
                                                  {Judgement::kBodyThenQuery, "\"fields\""},
                                                  {Judgement::kBodyWithinHandler, "\"fields\""}};
  for (const auto& [judgement, rule] : rules) {
    row.judgement = judgement;
    EXPECT_EQ(textOf(row, L"bodyRule"), rule);
    EXPECT_EQ(formOf(row).hasKey(L"anyQuery"), judgement == Judgement::kBodyWithinHandler);
  }
  EXPECT_EQ(textOf(row, L"anyQuery"), "1");
}

TEST(CatalogueForm, TellsFieldsInTheirOrderWithTheirTypes) {
  RouteRow row = plainRow();
  row.query = {{L"since", FieldType::kUnsignedInteger, FieldPresence::kOptional, L"From here on."},
               {L"all", FieldType::kBoolean, FieldPresence::kRequired, L"Every one."}};
  row.body = {{L"name", FieldType::kString, FieldPresence::kRequired, L"Its name."},
              {L"disks", FieldType::kArray, FieldPresence::kOptional, L"More of them."}};
  EXPECT_EQ(textOf(row, L"query"),
            "[{help: \"From here on.\", name: \"since\", required: 0, type: \"number\"}, "
            "{help: \"Every one.\", name: \"all\", required: 1, type: \"boolean\"}]");
  EXPECT_EQ(textOf(row, L"body"),
            "[{help: \"Its name.\", name: \"name\", required: 1, type: \"text\"}, "
            "{help: \"More of them.\", name: \"disks\", required: 0, type: \"list\"}]");
}

TEST(CatalogueForm, TellsWhatAFieldMayHold) {
  RouteRow row = plainRow();
  FieldRow field = {L"x", FieldType::kString, FieldPresence::kOptional, L"It."};
  field.words = {L"ON", L"OFF"};
  field.range = {0, 0};
  field.unit = L"seconds";
  field.refersTo = L"disk";
  field.candidates = {L"disk", L"volumeId", {L"SPARE", L"PASS_THROUGH"}};
  field.when = {L"action", L"START"};
  row.body = {field};
  EXPECT_EQ(textOf(row, L"body"),
            "[{candidates: {from: \"disk\", of: \"volumeId\", usages: [\"SPARE\", \"PASS_THROUGH\"]}, "
            "help: \"It.\", least: 0, most: 0, name: \"x\", refersTo: \"disk\", required: 0, type: \"text\", "
            "unit: \"seconds\", when: {field: \"action\", word: \"START\"}, words: [\"ON\", \"OFF\"]}]");
  row.body.front().candidates = {L"array"};
  row.body.front().when = {L"action"};
  const ServiceObject form = formOf(row);
  const ServiceObject& told = *(*form.member(L"body").begin()).value;
  EXPECT_EQ(textForm(told.member(L"candidates")), "{from: \"array\"}");
  EXPECT_EQ(textForm(told.member(L"when")), "{field: \"action\"}");
}

TEST(CatalogueForm, TellsAnAnswerByItsSchema) {
  RouteRow row = plainRow();
  row.answer = {L"VolumeChange", false, true};
  EXPECT_EQ(textOf(row, L"answer"), "{list: 0, momentary: 1, schema: \"VolumeChange\"}");
  row.answer = {schemas::kRaid, true};
  EXPECT_EQ(textOf(row, L"answer"),
            "{columns: [\"raidId\", \"raidEnabled\", \"maxDisksPerArray\", \"maxVolumesPerArray\"], "
            "list: 1, schema: \"" +
                wideToUtf8(schemas::kRaid) + "\"}");
}

TEST(CatalogueForm, TellsOfAnEffectWhichObjectsItMeetsAndWhatTheyBecome) {
  RouteRow row = plainRow();
  row.effects = {
      {Fate::kComes,
       L"volume",
       L"name",
       L"itself",
       L"It comes.",
       {},
       L"single",
       L"diskId",
       {L"raidLevel", L"size", L"disks", L"arrayId", true}},
      {Fate::kComes, L"volume", L"name", L"itself", L"Two.", {}, nullptr, nullptr, {nullptr, L"size"}}};
  EXPECT_EQ(
      textOf(row, L"effects"),
      "[{argument: \"name\", becomes: {array: \"arrayId\", disks: \"disks\", fillsArray: 1, "
      "level: \"raidLevel\", size: \"size\"}, except: \"diskId\", fate: \"comes\", relation: \"itself\", "
      "text: \"It comes.\", type: \"volume\", where: \"single\"}, "
      "{argument: \"name\", becomes: {size: \"size\"}, fate: \"comes\", relation: \"itself\", "
      "text: \"Two.\", type: \"volume\"}]");
}

TEST(CatalogueForm, TellsWhatARequestDoes) {
  RouteRow row = plainRow();
  row.effect = Effect::kDestroys;
  row.role = Role::kAdminister;
  row.refusals = {{"GONE", L"It is gone.", RefusalKind::kAbsent}};
  row.call.operations = {L"VexOne", L"VexOther"};
  row.effects = {{Fate::kGoes, L"volume", L"{volumeId}", L"itself", L"It goes.", {L"action", L"START"}},
                 {Fate::kChanges, L"setting", nullptr, nullptr, L"It changes."}};
  row.works = {{WorkKind::kVerify, L"{volumeId}", {L"action", L"START"}}, {WorkKind::kRebuild, L"diskId"}};
  EXPECT_EQ(textOf(row, L"effect"), "\"destroys\"");
  EXPECT_EQ(textOf(row, L"role"), "\"administer\"");
  EXPECT_EQ(textOf(row, L"refusals"), "[{errorId: \"GONE\", kind: \"absent\", words: \"It is gone.\"}]");
  EXPECT_EQ(textOf(row, L"operations"), "[\"VexOne\", \"VexOther\"]");
  EXPECT_EQ(textOf(row, L"effects"),
            "[{argument: \"{volumeId}\", fate: \"goes\", relation: \"itself\", text: \"It goes.\", "
            "type: \"volume\", when: {field: \"action\", word: \"START\"}}, "
            "{fate: \"changes\", text: \"It changes.\", type: \"setting\"}]");
  EXPECT_EQ(textOf(row, L"work"),
            "[{kind: \"verify\", on: \"{volumeId}\", when: {field: \"action\", word: \"START\"}}, "
            "{kind: \"rebuild\", on: \"diskId\"}]");
}

}  // namespace
