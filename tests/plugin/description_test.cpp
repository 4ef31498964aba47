#include <gtest/gtest.h>

#include <map>
#include <set>

#include "mirn_plugin.h"
#include "plugin_extensions.h"
#include "scripted_library/scripted_library.h"
#include "service_exceptions.h"
#include "support/default_settings.h"
#include "text.h"

using ovra::data_transfer::ServiceObject;

namespace {

class Description : public testing::Test {
 protected:
  std::vector<const ServiceObject*> elementsOf(const wchar_t* key) const {
    std::vector<const ServiceObject*> elements;
    const ServiceObject& list = description.member(key);
    for (auto place = list.begin(); place != list.end(); ++place) elements.push_back((*place).value);
    return elements;
  }

  const ServiceObject& route(const std::wstring& id) const {
    for (const ServiceObject* candidate : elementsOf(L"routes")) {
      if (candidate->member(L"id").toString() == id) return *candidate;
    }
    throw std::out_of_range(wideToUtf8(id));
  }

  const DefaultSettings settings;
  ScriptedLibrary& library = ScriptedLibrary::fresh();
  const std::shared_ptr<ovra::service_plugin_interface> plugin = std::make_shared<mirn_plugin>();
  const ServiceObject description = std::dynamic_pointer_cast<ovra::described_plugin_1>(plugin)->describe();
};

TEST_F(Description, IsThereBeforeInitializeAndAsksNoLibrary) {
  EXPECT_EQ(elementsOf(L"routes").size(), 41u);
  EXPECT_TRUE(library.callTexts().empty());
}

TEST_F(Description, TellsARoute) {
  const ServiceObject& rebuild = route(L"rebuildVolume");
  EXPECT_EQ(rebuild.member(L"method").toString(), L"PUT");
  EXPECT_EQ(rebuild.member(L"key").toString(), L"mirn/volumes");
  EXPECT_EQ(rebuild.member(L"path").toString(), L"mirn/volumes/{volumeId}/rebuild");
  EXPECT_EQ(rebuild.member(L"effect").toString(), L"destroys");
  EXPECT_EQ(rebuild.member(L"role").toString(), L"operate");
  EXPECT_EQ(rebuild.member(L"answer").member(L"schema").toString(), L"VolumeStateChange");
  const ServiceObject& disk = *(*rebuild.member(L"body").begin()).value;
  EXPECT_EQ(disk.member(L"name").toString(), L"diskId");
  EXPECT_EQ(disk.member(L"refersTo").toString(), L"disk");
  EXPECT_EQ(disk.member(L"candidates").member(L"of").toString(), L"volumeId");
}

TEST_F(Description, HasASchemaForEveryAnswer) {
  for (const ServiceObject* told : elementsOf(L"routes")) {
    if (!told->hasKey(L"answer")) continue;
    const std::wstring schema = told->member(L"answer").member(L"schema").toString();
    EXPECT_TRUE(description.member(L"schemas").hasKey(schema)) << wideToUtf8(schema);
  }
}

TEST_F(Description, HandlesEachOfTheKeysThatItNames) {
  std::set<std::wstring> told;
  for (const ServiceObject* one : elementsOf(L"routes")) told.insert(one->member(L"key").toString());
  const std::vector<std::wstring> handled = plugin->getHandledPaths();
  EXPECT_EQ(told, std::set<std::wstring>(handled.begin(), handled.end()));
}

TEST_F(Description, TellsWhatEveryRouteSaysBeforeInitialize) {
  const ServiceObject& offline = *elementsOf(L"refusals").front();
  for (const ServiceObject* told : elementsOf(L"routes")) {
    try {
      plugin->handleRequest(told->member(L"key").toString(), 1, {}, {}, {});
      FAIL() << "served";
    } catch (const ListenerException& refusal) {
      EXPECT_EQ(utf8ToWide(refusal.getErrorId()), offline.member(L"errorId").toString());
      EXPECT_EQ(utf8ToWide(refusal.what()), offline.member(L"words").toString());
    }
  }
  EXPECT_EQ(offline.member(L"kind").toString(), L"offline");
}

TEST_F(Description, TellsTheKindOfARefusalThatNothingNames) {
  const std::map<std::wstring, std::wstring> expected = {{L"OBJECT_NOT_FOUND", L"absent"},
                                                         {L"INVALID_PARAMETER", L"request"},
                                                         {L"Mirn_INVALID_RAID_LEVEL", L"request"},
                                                         {L"Mirn_UNSUPPORTED_RAID_LEVEL", L"request"},
                                                         {L"NOT_SUPPORTED", L"unsupported"},
                                                         {L"Mirn_DISK_INVALID_STATE", L"state"},
                                                         {L"Mirn_ARRAY_INVALID_STATE", L"state"},
                                                         {L"Mirn_VOLUME_INVALID_STATE", L"state"},
                                                         {L"Mirn_OFFLINE", L"offline"},
                                                         {L"Mirn_NOT_INITIALIZED", L"offline"}};
  std::map<std::wstring, std::wstring> told;
  const ServiceObject& fallback = description.member(L"fallback");
  for (auto kind = fallback.begin(); kind != fallback.end(); ++kind) {
    told[(*kind).key] = (*kind).value->toString();
  }
  EXPECT_EQ(told, expected);
  EXPECT_EQ(description.member(L"otherwise").toString(), L"failure");
}

}  // namespace
