#include "plan/operation_effects.h"

#include <gtest/gtest.h>

#include "support/body.h"

namespace insight {

namespace {

ServiceObject listOf(const ServiceObject& only) {
  ServiceObject all = ServiceObject::array();
  all.at(0) = only;
  return all;
}

TEST(EffectsOfOperations, AreWhatThePlugInTells) {
  const ServiceObject when = body({{"field", "source"}, {"word", "DISK"}});
  const ServiceObject becomes = body({{"level", "raidLevel"},
                                      {"size", "size"},
                                      {"disks", "disks"},
                                      {"array", "arrayId"},
                                      {"fillsArray", true}});
  const ServiceObject effect = body({{"fate", "comes"},
                                     {"type", "volume"},
                                     {"argument", "name"},
                                     {"relation", "itself"},
                                     {"text", "It comes."},
                                     {"when", when},
                                     {"where", "single"},
                                     {"except", "diskId"},
                                     {"becomes", becomes}});
  const ServiceObject work = body({{"kind", "migrate"}, {"on", "name"}, {"when", when}});
  const ServiceObject route = body({{"id", "create"}, {"effects", listOf(effect)}, {"work", listOf(work)}});
  const auto all = effectsOf(body({{"routes", listOf(route)}}));
  ASSERT_EQ(all.count(L"create"), 1U);
  ASSERT_EQ(all.at(L"create").effects.size(), 1U);
  const OperationEffect& told = all.at(L"create").effects[0];
  EXPECT_EQ(told.fate, L"comes");
  EXPECT_EQ(told.type, L"volume");
  EXPECT_EQ(told.argument, L"name");
  EXPECT_EQ(told.relation, L"itself");
  EXPECT_EQ(told.text, L"It comes.");
  EXPECT_EQ(told.when.field, L"source");
  EXPECT_EQ(told.when.word, L"DISK");
  EXPECT_EQ(told.where, L"single");
  EXPECT_EQ(told.except, L"diskId");
  EXPECT_EQ(told.becomes.level, L"raidLevel");
  EXPECT_EQ(told.becomes.size, L"size");
  EXPECT_EQ(told.becomes.disks, L"disks");
  EXPECT_EQ(told.becomes.array, L"arrayId");
  EXPECT_TRUE(told.becomes.fillsArray);
  ASSERT_EQ(all.at(L"create").works.size(), 1U);
  EXPECT_EQ(all.at(L"create").works[0].kind, L"migrate");
  EXPECT_EQ(all.at(L"create").works[0].on, L"name");
  EXPECT_EQ(all.at(L"create").works[0].when.word, L"DISK");
}

TEST(EffectsOfOperations, MayBeNone) {
  const auto all = effectsOf(body({{"routes", listOf(body({{"id", "rescan"}}))}}));
  EXPECT_TRUE(all.at(L"rescan").effects.empty());
  EXPECT_TRUE(all.at(L"rescan").works.empty());
}

}  // namespace

}  // namespace insight
