#include "catalogue.h"

#include <gmock/gmock.h>

#include <map>
#include <regex>
#include <set>
#include <utility>

#include "http_method.h"
#include "text.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Ids = std::set<std::wstring>;

const Ids kReads = {L"getState",
                    L"getVersion",
                    L"getConfig",
                    L"listVolumes",
                    L"listArrays",
                    L"listArrayDevices",
                    L"listArrayVolumes",
                    L"listControllers",
                    L"listControllerDevices",
                    L"listControllerArrays",
                    L"listControllerPorts",
                    L"listControllerVolumes",
                    L"listDevices",
                    L"listPorts",
                    L"listRaids",
                    L"getRaid",
                    L"listRaidControllers",
                    L"listEvents"};

template <class Property>
std::map<std::wstring, Ids> idsBy(Property property) {
  std::map<std::wstring, Ids> ids;
  for (const RouteRow* row : catalogue()) ids[property(*row)].insert(row->id);
  return ids;
}

TEST(Catalogue, HasARowForEachRouteUnderItsNumber) {
  Ids ids;
  Ids places;
  for (std::size_t number = 0; number < kRouteCount; ++number) {
    ASSERT_NE(catalogue()[number], nullptr) << number;
    const RouteRow& row = *catalogue()[number];
    EXPECT_EQ(static_cast<std::size_t>(row.route), number);
    EXPECT_EQ(&rowOf(row.route), &row);
    ids.insert(row.id);
    places.insert(std::to_wstring(row.method) + L" " + templateOf(row));
  }
  EXPECT_EQ(kRouteCount, 41u);
  EXPECT_EQ(ids.size(), kRouteCount);
  EXPECT_EQ(places.size(), kRouteCount);
}

/// A command line leads from the two words to one route.
TEST(Catalogue, AsksForEachRouteByTwoWordsOfItsOwn) {
  static const std::wregex kWord(L"[a-z]+(-[a-z]+)*");
  std::set<std::pair<std::wstring, std::wstring>> commands;
  for (const RouteRow* row : catalogue()) {
    const std::wstring noun = row->command.noun;
    EXPECT_TRUE(noun.empty() || std::regex_match(noun, kWord)) << wideToUtf8(row->id);
    EXPECT_TRUE(std::regex_match(row->command.verb, kWord)) << wideToUtf8(row->id);
    EXPECT_TRUE(commands.emplace(noun, row->command.verb).second) << wideToUtf8(row->id);
    if (noun.empty()) {
      EXPECT_STREQ(row->id, row->command.verb);
    }
  }
}

TEST(Catalogue, TellsWhatEachRouteDoesAtWorst) {
  const std::map<std::wstring, Ids> expected = {
      {L"read", kReads},
      {L"harmless", {L"rescan", L"locatePort"}},
      {L"changes",
       {L"renameVolume", L"verifyVolume", L"resetDiskSmart", L"removeDisk", L"setConfig", L"resizeVolume",
        L"setVolumeCachePolicy", L"setArrayWriteCache", L"setControllerReadPatrol", L"setControllerRohi"}},
      {L"destroys",
       {L"rebuildVolume", L"setDiskSpare", L"createVolume", L"deleteVolume", L"changeVolumeLevel",
        L"initializeVolume", L"markVolumeNormal", L"setVolumeWriteHolePolicy", L"clearDisk",
        L"markDiskNormal", L"addArrayDisks"}}};
  EXPECT_EQ(idsBy([](const RouteRow& row) { return toText(row.effect); }), expected);
}

TEST(Catalogue, TellsWhoMayAskForEachRoute) {
  const std::map<std::wstring, Ids> expected = {
      {L"observe", kReads},
      {L"operate",
       {L"rescan", L"locatePort", L"renameVolume", L"verifyVolume", L"resetDiskSmart", L"removeDisk",
        L"rebuildVolume", L"setDiskSpare"}},
      {L"administer",
       {L"setConfig", L"resizeVolume", L"setVolumeCachePolicy", L"setArrayWriteCache",
        L"setControllerReadPatrol", L"setControllerRohi", L"createVolume", L"deleteVolume",
        L"changeVolumeLevel", L"initializeVolume", L"markVolumeNormal", L"setVolumeWriteHolePolicy",
        L"clearDisk", L"markDiskNormal", L"addArrayDisks"}}};
  EXPECT_EQ(idsBy([](const RouteRow& row) { return toText(row.role); }), expected);
}

TEST(Catalogue, TellsWhichRoutesLeaveWorkBehind) {
  const std::map<std::wstring, Ids> expected = {
      {L"rebuild", {L"rebuildVolume"}},
      {L"initialize", {L"initializeVolume"}},
      {L"verify", {L"verifyVolume"}},
      {L"migrate", {L"changeVolumeLevel", L"resizeVolume", L"addArrayDisks", L"createVolume"}}};
  std::map<std::wstring, Ids> works;
  for (const RouteRow* row : catalogue()) {
    for (const WorkRow& work : row->works) works[toText(work.kind)].insert(row->id);
  }
  EXPECT_EQ(works, expected);
}

TEST(Catalogue, ReadsAreTheGetsAndTellNoEffects) {
  for (const RouteRow* row : catalogue()) {
    EXPECT_EQ(row->method == HttpMethod::kGet, row->effect == Effect::kRead) << wideToUtf8(row->id);
    const bool acts = row->effect == Effect::kChanges || row->effect == Effect::kDestroys;
    EXPECT_EQ(acts, !row->effects.empty()) << wideToUtf8(row->id);
  }
}

TEST(Catalogue, WhatDestroysTellsWhatIsLost) {
  for (const RouteRow* row : catalogue()) {
    if (row->effect != Effect::kDestroys) continue;
    if (row->route == RouteId::kMarkVolumeNormal) continue;  // what is lost there was lost before
    const bool isTold = std::any_of(row->effects.begin(), row->effects.end(), [](const EffectRow& effect) {
      return effect.fate == Fate::kGoes || effect.fate == Fate::kOverwritten;
    });
    EXPECT_TRUE(isTold) << wideToUtf8(row->id);
  }
}

/// All names that stand for something in a request of the row.
Ids argumentsOf(const RouteRow& row) {
  Ids names;
  for (const std::wstring& name : pathArgumentsOf(row)) names.insert(name);
  for (const FieldRow& field : row.query) names.insert(field.name);
  for (const FieldRow& field : row.body) names.insert(field.name);
  return names;
}

Ids namesIn(const std::wstring& text) {
  Ids names;
  for (std::size_t open = text.find(L'{'); open != std::wstring::npos; open = text.find(L'{', open + 1)) {
    names.insert(text.substr(open + 1, text.find(L'}', open) - open - 1));
  }
  return names;
}

TEST(Catalogue, EffectsWorkAndConditionsNameArgumentsOfTheirRoute) {
  for (const RouteRow* row : catalogue()) {
    const Ids known = argumentsOf(*row);
    Ids named;
    const auto name = [&](const wchar_t* argument) {
      if (argument) named.insert(argument);
    };
    for (const EffectRow& effect : row->effects) {
      named.merge(namesIn(effect.text));
      name(effect.argument);
      name(effect.when.key);
      name(effect.except);
      const Shape& becomes = effect.becomes;
      for (const wchar_t* const told : {becomes.level, becomes.size, becomes.disks, becomes.array})
        name(told);
    }
    for (const WorkRow& work : row->works) {
      name(work.on);
      name(work.when.key);
    }
    for (const FieldRow& field : row->body) {
      name(field.when.key);
      name(field.candidates.of);
    }
    for (const std::wstring& argument : named) {
      EXPECT_EQ(known.count(argument), 1u) << wideToUtf8(row->id) << " " << wideToUtf8(argument);
    }
  }
}

TEST(Catalogue, EffectsTellTypeAndRelationByTheirWordsAndTheRestInASentence) {
  const Ids types = {L"volume", L"disk", L"array", L"controller", L"port", L"setting"};
  const Ids relations = {L"itself", L"volumes", L"disks", L"array", L"journal", L"ports", L"neighbours"};
  const Ids situations = {L"emptied",  L"kept",    L"member",    L"single", L"lost",   L"degraded",
                          L"unshared", L"missing", L"forgotten", L"own",    L"plugged"};
  for (const RouteRow* row : catalogue()) {
    for (const EffectRow& effect : row->effects) {
      const std::string text = wideToUtf8(effect.text);
      EXPECT_EQ(types.count(effect.type), 1U) << wideToUtf8(row->id) << ": " << text;
      EXPECT_EQ(effect.argument == nullptr, effect.relation == nullptr) << wideToUtf8(row->id);
      const std::wstring relation = effect.relation ? effect.relation : L"itself";
      EXPECT_EQ(relations.count(relation), 1U) << wideToUtf8(row->id) << ": " << text;
      const std::wstring situation = effect.where ? effect.where : L"kept";
      EXPECT_EQ(situations.count(situation), 1U) << wideToUtf8(row->id) << ": " << text;
      EXPECT_THAT(text, testing::EndsWith(".")) << wideToUtf8(row->id);
    }
  }
}

TEST(Catalogue, OwnRefusalsOfARouteAreToldOnce) {
  for (const RouteRow* row : catalogue()) {
    std::set<std::pair<std::string, std::wstring>> told;
    for (const RefusalRow& refusal : row->refusals) told.emplace(refusal.errorId, refusal.words);
    EXPECT_EQ(told.size(), row->refusals.size()) << wideToUtf8(row->id);
  }
}

TEST(Catalogue, WhatIsAskedOfTheLibraryIsAskedByWhatIsNoReadAlone) {
  for (const RouteRow* row : catalogue()) {
    const bool asks = row->effect != Effect::kRead && row->route != RouteId::kSetConfig;
    EXPECT_EQ(asks, !row->call.operations.empty()) << wideToUtf8(row->id);
  }
}

TEST(Catalogue, DerivesPatternAndPathsFromTheTemplate) {
  const RouteRow& rebuild = rowOf(RouteId::kRebuildVolume);
  EXPECT_EQ(patternOf(rebuild), L"([[:alnum:]]+)/rebuild");
  EXPECT_EQ(keyOf(rebuild), L"mirn/volumes");
  EXPECT_EQ(templateOf(rebuild), L"mirn/volumes/{volumeId}/rebuild");
  EXPECT_THAT(pathArgumentsOf(rebuild), ElementsAre(L"volumeId"));
  const RouteRow& state = rowOf(RouteId::kGetState);
  EXPECT_EQ(patternOf(state), L"state");
  EXPECT_EQ(keyOf(state), L"mirn");
  EXPECT_EQ(templateOf(state), L"mirn/state");
  EXPECT_THAT(pathArgumentsOf(state), IsEmpty());
  EXPECT_EQ(patternOf(rowOf(RouteId::kListVolumes)), L"");
  EXPECT_EQ(templateOf(rowOf(RouteId::kListVolumes)), L"mirn/volumes");
}

}  // namespace
