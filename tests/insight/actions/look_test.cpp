#include "actions/look.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/actions/small_catalogue.h"

namespace insight {
namespace {

using testing::ElementsAre;
using Segments = RehearsingPlugin::Segments;

/// "OPERATION WORD VERDICT" of each, with the words of a refusal or the names of what is needed.
std::vector<std::string> look(const std::wstring& type, RehearsingPlugin plugin) {
  const std::vector<Operation> operations = operationsOf(smallCatalogue());
  std::vector<std::string> lines;
  for (const Action& action : actionsOn(type, L"7", operations, plugin)) {
    std::wstring line = action.operation->id + L' ' + action.word;
    if (action.verdict == Verdict::kAllowed) line += L" allowed";
    if (action.verdict == Verdict::kRefused) line += L" refused " + action.errorId + L": " + action.words;
    if (action.verdict != Verdict::kRefused) {
      EXPECT_EQ(action.errorId + action.words, L"");
    }
    for (const OperationField* const need : action.needs) line += L" needs " + need->name;
    lines.push_back(wideToUtf8(line));
  }
  return lines;
}

/// START does not go without a yes or no.
void requireRepair(const Segments& segments, const ServiceObject& body) {
  if (segments.back() != L"verify" || body.member(L"action").toString() != L"START") return;
  if (!body.hasKey(L"repair")) throw ListenerException("INVALID_PARAMETER", "Repair is missing");
}

TEST(Look, TellsEachOperationAndEachWordOfIt) {
  EXPECT_THAT(look(L"volume", RehearsingPlugin(requireRepair)),
              ElementsAre("verify START needs repair", "verify CANCEL allowed", "rebuild  needs diskId",
                          "remove  allowed"));
}

TEST(Look, TellsWhyTheMachineRefuses) {
  const auto isDegraded = [](const Segments& segments, const ServiceObject& body) {
    requireRepair(segments, body);
    if (segments.back() == L"verify") throw ListenerException("Mirn_VOLUME_INVALID_STATE", "It is degraded");
  };
  EXPECT_THAT(look(L"volume", RehearsingPlugin(isDegraded)),
              ElementsAre("verify START refused Mirn_VOLUME_INVALID_STATE: It is degraded",
                          "verify CANCEL refused Mirn_VOLUME_INVALID_STATE: It is degraded",
                          "rebuild  needs diskId", "remove  allowed"));
}

TEST(Look, AsksForTheObjectOfThePath) {
  Segments asked;
  const auto remember = [&](const Segments& segments, const ServiceObject&) { asked = segments; };
  look(L"volume", RehearsingPlugin(remember));
  EXPECT_THAT(asked, ElementsAre(L"7"));
}

TEST(Look, AtTheServiceHasWhatIsAboutNoObject) {
  EXPECT_THAT(look(L"service", RehearsingPlugin()), ElementsAre("rescan  allowed"));
  EXPECT_TRUE(look(L"port", RehearsingPlugin()).empty());
}

TEST(Look, TriesABodyWhereAllArgumentsMayBeLeftOut) {
  ServiceObject description;
  ServiceObject settings = routeForm(L"settings", L"mirn/volumes/settings", nullptr);
  addField(settings, 0, L"timeout", L"number", false);
  description.member(L"routes").at(0) = settings;
  bool isObject = false;
  RehearsingPlugin plugin([&](const Segments&, const ServiceObject& body) { isObject = body.isObject(); });
  actionsOn(L"service", {}, operationsOf(description), plugin);
  EXPECT_TRUE(isObject);
}

TEST(Look, TellsARefusalWithoutAnId) {
  const auto fail = [](const Segments&, const ServiceObject&) { throw std::runtime_error("It is broken"); };
  EXPECT_THAT(look(L"service", RehearsingPlugin(fail)), ElementsAre("rescan  refused : It is broken"));
}

}  // namespace
}  // namespace insight
