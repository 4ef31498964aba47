#include "actions/operation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/actions/small_catalogue.h"

namespace insight {
namespace {

using testing::ElementsAre;

TEST(Operations, AreThoseThatDoSomething) {
  std::vector<std::wstring> ids;
  for (const Operation& each : operationsOf(smallCatalogue())) ids.push_back(each.id);
  EXPECT_THAT(ids, ElementsAre(L"verify", L"rebuild", L"remove", L"rescan"));
}

TEST(Operations, TellTheirObjectAndPath) {
  const std::vector<Operation> operations = operationsOf(smallCatalogue());
  EXPECT_EQ(operations[0].objectType, L"volume");
  EXPECT_EQ(operations[0].argument, L"volumeId");
  EXPECT_EQ(operations[0].method, HttpMethod::kPut);
  EXPECT_THAT(operations[0].segments, ElementsAre(L"{volumeId}", L"verify"));
  EXPECT_THAT(operations[2].segments, ElementsAre(L"{volumeId}"));
  EXPECT_EQ(operations[3].objectType, L"service");
  EXPECT_THAT(operations[3].segments, ElementsAre(L"rescan"));
}

TEST(Operations, TellTheirArguments) {
  const std::vector<Operation> operations = operationsOf(smallCatalogue());
  const OperationField* const action = operations[0].field(L"action");
  ASSERT_NE(action, nullptr);
  EXPECT_TRUE(action->isRequired);
  EXPECT_THAT(action->words, ElementsAre(L"START", L"CANCEL"));
  EXPECT_FALSE(action->candidates.has_value());
  EXPECT_EQ(operations[0].field(L"other"), nullptr);
  const auto& candidates = operations[1].field(L"diskId")->candidates;
  ASSERT_TRUE(candidates.has_value());
  EXPECT_EQ(candidates->from, L"disk");
  EXPECT_EQ(candidates->of, L"volumeId");
  EXPECT_THAT(candidates->usages, ElementsAre(L"SPARE"));
}

TEST(Operations, WithTwoObjectsInTheirPathAreLeftOut) {
  ServiceObject description = smallCatalogue();
  ServiceObject& second = description.member(L"routes").at(1).member(L"arguments").at(1);
  second.member(L"name") = std::wstring(L"diskId");
  second.member(L"refersTo") = std::wstring(L"disk");
  EXPECT_EQ(operationsOf(description).front().id, L"rebuild");
}

}  // namespace
}  // namespace insight
