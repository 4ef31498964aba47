#include "schemas.h"

#include <gtest/gtest.h>

#include <functional>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "answer_forms.h"
#include "catalogue.h"
#include "text.h"

namespace {

using ovra::data_transfer::ServiceObject;

TEST(Schemas, AreThereForEveryAnswerAndForNothingElse) {
  const ServiceObject all = allSchemas();
  std::set<std::wstring> answered;
  for (const RouteRow* row : catalogue()) {
    if (row->answer.schema) answered.insert(row->answer.schema);
  }
  std::set<std::wstring> told;
  for (auto schema = all.begin(); schema != all.end(); ++schema) told.insert((*schema).key);
  EXPECT_EQ(told, answered);
}

TEST(Schemas, AreObjectsWithProperties) {
  const ServiceObject all = allSchemas();
  for (auto schema = all.begin(); schema != all.end(); ++schema) {
    const ServiceObject& told = *(*schema).value;
    EXPECT_EQ(told.member(L"type").toString(), L"object");
    EXPECT_FALSE(told.member(L"properties").asObject().empty()) << wideToUtf8((*schema).key);
  }
}

std::vector<std::wstring> keysOf(const ServiceObject& object) {
  std::vector<std::wstring> keys;
  for (auto member = object.begin(); member != object.end(); ++member) keys.push_back((*member).key);
  return keys;
}

TEST(Schemas, TellTheKeysOfAnAnswer) {
  VolumeAnswer whole;
  whole.volumeId = L"7";
  whole.size = 1;
  whole.cachePolicy = CachePolicy::OFF;
  whole.raidLevel = RaidLevel::RAID_1;
  whole.stripSize = StripSize::SIZE_64KB;
  whole.rwhPolicy = RwhPolicy::RWH_OFF;
  whole.journalingDriveId = L"";
  whole.disks = std::vector<std::wstring>{L"4"};
  const ServiceObject schemas = allSchemas();
  const ServiceObject& schema = schemas.member(L"VolumeChange");
  EXPECT_EQ(keysOf(schema.member(L"properties")), keysOf(formOf(whole)));
  EXPECT_EQ(keysOf(formOf(VolumeAnswer{L"7", {}, {}, {}, {}, {}, {}, {}})),
            std::vector<std::wstring>{L"volumeId"});
  EXPECT_EQ((*schema.member(L"required").begin()).value->toString(), L"volumeId");
  EXPECT_EQ(schema.member(L"properties").member(L"size").member(L"unit").toString(), L"MiB");
}

/// Every property below a schema, of parts and of the elements of lists, too.
void visitProperties(const ServiceObject& schema,
                     const std::function<void(const std::wstring&, const ServiceObject&)>& visit) {
  if (schema.hasKey(L"items")) visitProperties(schema.member(L"items"), visit);
  if (!schema.hasKey(L"properties")) return;
  const ServiceObject& properties = schema.member(L"properties");
  for (auto property = properties.begin(); property != properties.end(); ++property) {
    visit((*property).key, *(*property).value);
    visitProperties(*(*property).value, visit);
  }
}

TEST(Schemas, DescribeEveryPropertyInWholeSentences) {
  const ServiceObject all = allSchemas();
  const std::regex sentence("[A-Z].*\\.");
  std::size_t count = 0;
  for (auto schema = all.begin(); schema != all.end(); ++schema) {
    visitProperties(*(*schema).value, [&](const std::wstring& key, const ServiceObject& property) {
      if (!property.hasKey(L"description")) {
        EXPECT_TRUE(property.hasKey(L"properties")) << "its parts tell: " << wideToUtf8(key);
        return;
      }
      const std::string told = wideToUtf8(property.member(L"description").toString());
      EXPECT_TRUE(std::regex_match(told, sentence)) << wideToUtf8((*schema).key + L"." + key) << ": " << told;
      ++count;
    });
  }
  EXPECT_GT(count, 100U) << "something is looked at";
}

/// A list without columns could be shown as no table, and a column must be something that fits a cell.
TEST(Schemas, TellColumnsOfWhatIsListedAndOnlyProperties) {
  const ServiceObject all = allSchemas();
  const std::set<std::wstring> cells{L"string", L"integer", L"boolean"};
  for (const RouteRow* row : catalogue()) {
    if (!row->answer.isList) continue;
    const std::vector<std::wstring> columns = columnsOf(row->answer.schema);
    EXPECT_FALSE(columns.empty()) << wideToUtf8(row->answer.schema);
    const ServiceObject& properties = all.member(row->answer.schema).member(L"properties");
    for (const std::wstring& column : columns) {
      ASSERT_TRUE(properties.hasKey(column)) << wideToUtf8(column);
      const ServiceObject& type = properties.member(column).member(L"type");
      EXPECT_EQ(cells.count(type.isArray() ? (*type.begin()).value->toString() : type.toString()), 1u)
          << wideToUtf8(column);
    }
  }
}

TEST(Schemas, TellNoColumnsOfWhatNoRouteLists) { EXPECT_TRUE(columnsOf(L"Config").empty()); }

}  // namespace
