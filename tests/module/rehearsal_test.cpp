#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "module/object_ids.h"
#include "module/rehearsal_walk.h"
#include "support/log_lines.h"
#include "support/text_form.h"

// What a plug-in tells a host of requests that it does not do.

namespace {

using namespace small_machine;
using testing::IsEmpty;

constexpr std::uint32_t kSeed = 20260;
constexpr unsigned long kSteps = MIRN_TEST_REHEARSALS;

TEST(RehearsedRequests, AreRefusedAsTheDeedAndNameItsCall) {
  const LogLines log;
  const LoadedModule module(MIRN_TEST_MODULE);
  RehearsalWalk walk(module, kSeed);
  for (unsigned long step = 0; step < kSteps; ++step) {
    const std::string difference = walk.step();
    ASSERT_EQ(difference, "") << "seed " << kSeed << ", step " << step;
  }
  // All that a route reaches: of the twenty-seven actions two have none.
  unsigned operations = 0;
  for (const auto& [what, times] : walk.tally()) {
    if (what.rfind("Vex", 0) == 0) ++operations;
  }
  EXPECT_EQ(operations, 25u);
  for (const char* const what :
       {"no call", "lists", "no such argument", "RequestError INVALID_PARAMETER",
        "ListenerException INVALID_PARAMETER", "ListenerException OBJECT_NOT_FOUND",
        "ListenerException NOT_SUPPORTED", "ListenerException Mirn_DISK_INVALID_STATE",
        "ListenerException Mirn_INVALID_RAID_LEVEL", "MirnException NOT_SUPPORTED", "told by its route",
        "told as the report", "without a route", "without a key"}) {
    EXPECT_GE(walk.tally().count(what), 1u) << what;
  }
}

class Rehearsals : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_rehearsed);
    m_served.start();
    m_library.clearCalls();
  }

  std::string plan(const Request& request) {
    return outcomeOf([&] {
      return m_rehearsed->rehearse(request.path, request.method, request.segments, request.parameters,
                                   request.body);
    });
  }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  const DefaultSettings m_settings;
  LogLines m_log;
  const LoadedModule m_module{MIRN_TEST_MODULE};
  ServedModule m_served{m_module};
  const std::shared_ptr<ovra::rehearsed_plugin_1> m_rehearsed = m_served.as<ovra::rehearsed_plugin_1>();
};

TEST_F(Rehearsals, NameCallAndObjects) {
  const std::wstring id = idOf("volume", kDataVolume);
  EXPECT_EQ(
      plan(put(L"mirn/volumes", {id, L"name"}, body({{"name", "Fotos"}}))),
      "{arguments: [52], handles: [], libraryDecides: 1, objects: [{id: \"" + wideToUtf8(id) +
          "\", type: \"volume\"}], operation: \"VexVolumeRename\", record: \"466f746f73\", settings: {}}");
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

TEST_F(Rehearsals, NameSettings) {
  const std::string before = m_settings.image();
  ServiceObject order;
  order.member(L"locate_timeout") = std::uint64_t{60};
  EXPECT_EQ(plan(put(L"mirn", {L"config"}, order)),
            "{arguments: [], handles: [], libraryDecides: 1, objects: [], operation: null, record: null, "
            "settings: {locate_timeout: 60}}");
  EXPECT_EQ(m_settings.image(), before);
}

TEST_F(Rehearsals, KeepHandlesBehindAPointer) {
  const std::wstring array = idOf("array", kArray);
  const ServiceObject answer = m_rehearsed->rehearse(L"mirn/arrays", 3, {array}, {},
                                                     body({{"disks", diskIds({kFree2, kFree1, kFree2})}}));
  EXPECT_EQ(textForm(answer.member(L"operation")), "\"VexAddDisksToArray\"");
  EXPECT_EQ(textForm(answer.member(L"arguments")), "[41, 3, 0]");
  EXPECT_EQ(textForm(answer.member(L"handles")), "[24, 23, 24]");
  ServiceObject objects = answer.member(L"objects");
  EXPECT_EQ(textForm(objects.at(0).member(L"type")), "\"array\"");
  EXPECT_EQ(textForm(objects.at(1).member(L"id")), '"' + wideToUtf8(idOf("disk", kFree2)) + '"');
  EXPECT_EQ(textForm(objects.at(2).member(L"id")), '"' + wideToUtf8(idOf("disk", kFree1)) + '"');
  EXPECT_TRUE(objects.at(3).isNull()) << "each is named once";
}

TEST_F(Rehearsals, AreRefusedWhileThePluginDoesNotWork) {
  m_library.events().release();
  m_served->finish();
  EXPECT_EQ(plan(get(L"mirn/volumes")), "ListenerException Mirn_OFFLINE: Mirn plugin does not work");
  EXPECT_EQ(plan(get(L"mirn/nowhere")), "ListenerException Mirn_OFFLINE: Mirn plugin does not work");
  EXPECT_EQ(outcomeOf([&] {
              return m_rehearsed->rehearseEach(L"mirn/volumes", 3, {L"{volumeId}", L"init"}, {},
                                               ServiceObject::null(), L"{volumeId}", {ServiceObject(L"7")});
            }),
            "ListenerException Mirn_OFFLINE: Mirn plugin does not work");
}

TEST_F(Rehearsals, TellOfEachValueInItsPlace) {
  const ServiceObject answers = m_rehearsed->rehearseEach(
      L"mirn/volumes", 3, {L"{volumeId}", L"init"}, {}, ServiceObject::null(), L"{volumeId}",
      {ServiceObject(idOf("volume", kDataVolume)), ServiceObject(L"7"), ServiceObject(L"")});
  EXPECT_EQ(
      textForm(answers.begin() == answers.end() ? ServiceObject() : *(*answers.begin()).value).substr(0, 7),
      "{plan: ");
  std::vector<std::string> refusals;
  for (auto answer = answers.begin(); answer != answers.end(); ++answer) {
    const ServiceObject& form = *(*answer).value;
    if (form.hasKey(L"refusal")) refusals.push_back(textForm(form.member(L"refusal")));
  }
  EXPECT_THAT(refusals,
              testing::ElementsAre("{class: \"listener\", errorId: \"OBJECT_NOT_FOUND\", message: \"Volume "
                                   "identifier not found\", status: null}",
                                   "{class: \"http\", errorId: null, message: \"Request is not supported\", "
                                   "status: 404}"));
}

}  // namespace
