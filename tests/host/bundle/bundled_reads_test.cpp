#include "bundle/bundled_reads.h"

#include <gmock/gmock.h>

#include "bundle/bundled_objects.h"
#include "view/machine_view.h"

namespace host {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

ApiEndpoint read(const std::string& operation, const std::wstring& path) {
  ApiEndpoint endpoint;
  endpoint.operation = operation;
  endpoint.method = "GET";
  endpoint.path = path;
  endpoint.handle = [](const Call&, const std::string&) { return Answer{}; };
  return endpoint;
}

ApiEndpoint ownRead(const std::string& operation, const std::wstring& path,
                    std::vector<DocumentedParameter> parameters = {}) {
  ApiEndpoint endpoint = read(operation, path);
  endpoint.document.emplace();
  endpoint.document->parameters = std::move(parameters);
  return endpoint;
}

class BundledReadsTest : public testing::Test {
 protected:
  BundledReadsTest() {
    m_objects.ids = {{L"arrayId", {L"11", L"12"}}, {L"raidId", {}}};
    m_objects.acting = {{L"service", L"service"}, {L"array", L"11"}};
    m_objects.mostActing = 2;
  }

  void add(ApiEndpoint endpoint) { m_table.add(std::move(endpoint)); }

  /// "FILE TARGET" of each.
  std::vector<std::string> reads(bool ofPlugin) {
    BundledOperations operations;
    operations.learn(m_table);
    m_leftOut.clear();
    m_reads = ofPlugin ? operations.readsOfPlugin(m_objects, m_leftOut)
                       : operations.readsOfHost(m_objects, m_leftOut);
    std::vector<std::string> told;
    for (const BundledRead& each : m_reads) told.push_back(each.file + ' ' + targetText(each.target));
    return told;
  }
  std::vector<std::string> leftOut() const {
    std::vector<std::string> told;
    for (const LeftOut& each : m_leftOut) told.push_back(each.operation + ": " + each.reason);
    return told;
  }

  EndpointTable m_table;
  BundledObjects m_objects;
  std::vector<BundledRead> m_reads;
  std::vector<LeftOut> m_leftOut;
};

TEST_F(BundledReadsTest, ArePlacedByTheirPaths) {
  add(read("listVolumes", L"api/v1/mirn/volumes"));
  add(ownRead("getHealth", L"api/v1/health"));
  ApiEndpoint change = read("createVolume", L"api/v1/mirn/volumes");
  change.method = "POST";
  add(change);
  EXPECT_THAT(reads(true), ElementsAre("api/v1/mirn/volumes /api/v1/mirn/volumes"));
  EXPECT_THAT(reads(false), ElementsAre("api/v1/health /api/v1/health"));
}

TEST_F(BundledReadsTest, AskForEachObject) {
  add(read("listArrayVolumes", L"api/v1/mirn/arrays/{arrayId}/volumes"));
  add(read("getRaid", L"api/v1/mirn/raids/{raidId}"));
  EXPECT_THAT(reads(true), ElementsAre("api/v1/mirn/arrays/11/volumes /api/v1/mirn/arrays/11/volumes",
                                       "api/v1/mirn/arrays/12/volumes /api/v1/mirn/arrays/12/volumes"));
  EXPECT_THAT(leftOut(), IsEmpty());
}

TEST_F(BundledReadsTest, TellOfWhatThereIsNothingToAsk) {
  add(read("getThing", L"api/v1/test/{thingId}"));
  add(read("GET test", L"api/v1/other/{*}"));
  add(read("getPart", L"api/v1/test/{arrayId}/{raidId}"));
  EXPECT_THAT(reads(true), IsEmpty());
  EXPECT_THAT(leftOut(), ElementsAre("GET test: Nobody knows of what to ask it.",
                                     "getThing: Nobody knows of what to ask it.",
                                     "getPart: Nobody knows of what to ask it."));
}

TEST_F(BundledReadsTest, ActionsAreOfObjectsOfAnyType) {
  add(ownRead("listActions", L"api/v1/actions/{type}/{id}"));
  EXPECT_THAT(reads(false), ElementsAre("api/v1/actions/service/service /api/v1/actions/service/service",
                                        "api/v1/actions/array/11 /api/v1/actions/array/11"));
  EXPECT_THAT(leftOut(), IsEmpty());
  m_objects.areAllActing = false;
  reads(false);
  EXPECT_THAT(leftOut(), ElementsAre("listActions: Of more than 2 objects there are no actions."));
}

TEST_F(BundledReadsTest, HoldNothingThatOnlyAnAnswerInPartsNeeds) {
  const auto held = std::make_shared<int>();
  ApiEndpoint stream = ownRead("stream", L"api/v1/stream");
  stream.handle = nullptr;
  stream.begin = [held](const auto&, const auto&, const auto&) {};
  BundledOperations operations;
  {
    EndpointTable table;
    table.add(std::move(stream));
    operations.learn(table);
  }
  EXPECT_EQ(1, held.use_count());
}

TEST_F(BundledReadsTest, PagesAreLargeAndInTurn) {
  add(ownRead("listJobs", L"api/v1/jobs", {{"limit", false, {}, {}}, {"cursor", false, {}, {}}}));
  EXPECT_THAT(reads(false), ElementsAre("api/v1/jobs /api/v1/jobs?limit=1000",
                                        "api/v1/jobs.ended /api/v1/jobs?limit=1000&state=ended"));
  const BundledRead second = nextPage(m_reads[1], "p7");
  EXPECT_EQ(second.file, "api/v1/jobs.ended.page-2");
  EXPECT_EQ(targetText(second.target), "/api/v1/jobs?cursor=p7&limit=1000&state=ended");
  EXPECT_EQ(nextPage(second, "p8").file, "api/v1/jobs.ended.page-3");
  EXPECT_EQ(nextPage(second, "p8").page, 3U);
}

TEST_F(BundledReadsTest, WhatComesInPartsIsLeftOut) {
  ApiEndpoint endpoint = ownRead("getParts", L"api/v1/parts");
  endpoint.handle = nullptr;
  add(endpoint);
  add(ownRead("streamEvents", L"api/v1/events/stream"));
  EXPECT_THAT(reads(false), IsEmpty());
  EXPECT_THAT(leftOut(), ElementsAre("streamEvents: It has no end.", "getParts: It comes in parts."));
}

TEST_F(BundledReadsTest, NamesLeadNowhereElse) {
  m_objects.ids[L"arrayId"] = {L"..", L"a/b", L"a b", L"\u00e4", L".hidden", L"a..b"};
  add(read("listArrayVolumes", L"arrays/{arrayId}"));
  std::vector<std::string> files;
  reads(true);
  for (const BundledRead& each : m_reads) files.push_back(each.file);
  EXPECT_THAT(files, ElementsAre("arrays/%2E%2E", "arrays/a%2Fb", "arrays/a%20b", "arrays/%C3%A4",
                                 "arrays/.hidden", "arrays/a..b"));
}

TEST(BundledObjects, AreThoseOfThePictureAsFarAsThereIsPlace) {
  insight::MachineView machine;
  machine.controllers = {{L"1", {}, {}}, {L"2", {}, {}}};
  machine.arrays.resize(1);
  machine.arrays[0].id = L"3";
  machine.volumes.resize(1);
  machine.volumes[0].id = L"4";
  const BundledObjects all = bundledObjectsOf(machine, 5);
  EXPECT_THAT(all.acting, ElementsAre(testing::Pair(L"service", L"service"),
                                      testing::Pair(L"controller", L"1"), testing::Pair(L"controller", L"2"),
                                      testing::Pair(L"array", L"3"), testing::Pair(L"volume", L"4")));
  EXPECT_TRUE(all.areAllActing);
  EXPECT_THAT(all.ids.at(L"controllerId"), ElementsAre(L"1", L"2"));
  EXPECT_THAT(all.ids.at(L"diskId"), IsEmpty());
  const BundledObjects some = bundledObjectsOf(machine, 4);
  EXPECT_EQ(some.acting.size(), 4U);
  EXPECT_FALSE(some.areAllActing);
}

}  // namespace

}  // namespace host
