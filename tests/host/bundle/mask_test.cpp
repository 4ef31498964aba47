#include "bundle/mask.h"

#include <gmock/gmock.h>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <regex>
#include <string>

#include "support/by_name.h"
#include "text.h"
#include "view/machine_view.h"

namespace host {

namespace {

constexpr char kId[] = "12345678901234567890";

insight::MachineView machineWith(const std::wstring& serialNumber) {
  insight::MachineView machine;
  machine.disks.resize(1);
  machine.disks[0].id = L"12345678901234567890";
  machine.disks[0].type = L"SATA";
  machine.disks[0].serialNumber = serialNumber;
  return machine;
}

Mask maskOf(const std::wstring& serialNumber, const std::string& key = "key") {
  Mask mask(key);
  mask.learn(machineWith(serialNumber));
  return mask;
}

/// What stands in quotes instead.
std::string maskOf(const std::string& text, const Mask& mask) {
  const std::string quoted = mask.masked('"' + text + '"');
  return quoted.substr(1, quoted.size() - 2);
}

/// By the standard library, since the expressions of GoogleTest differ between systems.
MATCHER_P(HasForm, form, "") { return std::regex_match(arg, std::regex(form)); }

TEST(Mask, HasTheFormOfWhatItStandsFor) {
  const Mask mask = maskOf(L"QV48021000A7");
  EXPECT_THAT(maskOf("QV48021000A7", mask), HasForm("M[0-9A-F]{15}"));
  EXPECT_THAT(maskOf(kId, mask), HasForm("[0-9]{1,20}"));
  EXPECT_NE(maskOf(kId, mask), kId);
}

TEST(Mask, IsTheSameForOneKeyAndAnotherForAnother) {
  const std::string text = "QV48021000A7";
  EXPECT_EQ(maskOf(text, maskOf(L"QV48021000A7")), maskOf(text, maskOf(L"QV48021000A7")));
  EXPECT_NE(maskOf(text, maskOf(L"QV48021000A7")), maskOf(text, maskOf(L"QV48021000A7", "other")));
  EXPECT_NE(maskOf(kId, maskOf(L"S")), maskOf(kId, maskOf(L"S", "other")));
}

struct TextRow {
  std::string name;
  std::wstring serialNumber;
  std::string text;    ///< Of JSON.
  std::string masked;  ///< With "#" for the mask.
};

class MaskedTexts : public testing::TestWithParam<TextRow> {};

TEST_P(MaskedTexts, HaveTheMaskWhereTheSerialNumberStood) {
  const TextRow& row = GetParam();
  const Mask mask = maskOf(row.serialNumber);
  const std::string told = mask.masked(
      "{\"serialNumber\":" + boost::json::serialize(boost::json::string(wideToUtf8(row.serialNumber))) + '}');
  const std::string instead(boost::json::parse(told).at("serialNumber").as_string());
  std::string masked = mask.masked(row.text);
  for (std::size_t at = masked.find(instead); at != std::string::npos; at = masked.find(instead)) {
    masked.replace(at, instead.size(), "#");
  }
  EXPECT_EQ(masked, row.masked);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, MaskedTexts,
    testing::Values(TextRow{"Whole", L"QV48", R"({"name":"QV48"})", R"({"name":"#"})"},
                    TextRow{"InASentence", L"QV48", R"(["Disk SATA QV48 failed."])",
                            R"(["Disk SATA # failed."])"},
                    TextRow{"Twice", L"QV48", R"(["QV48,QV48"])", R"(["#,#"])"},
                    TextRow{"BehindAnEscape", L"QV48", R"(["a\nQV48\"QV48"])", R"(["a\n#\"#"])"},
                    TextRow{"AnotherWord", L"QV48", R"(["QV481","xQV48"])", R"(["QV481","xQV48"])"},
                    TextRow{"AmidAWordWhereLong", L"QV48021000A7", R"(["xQV48021000A7y"])", R"(["x#y"])"},
                    TextRow{"NoNumber", L"1234", R"([1234,"1234"])", R"([1234,"#"])"},
                    TextRow{"NoPartOfANumber", L"12345678", R"(["123456789"])", R"(["123456789"])"},
                    TextRow{"ShortOnesByThemselvesOnly", L"0", R"(["0 of RAID_0","SATA 0"])",
                            R"(["0 of RAID_0","SATA #"])"},
                    TextRow{"ShortOnesAsSuch", L"0", R"({"serialNumber":"0","state":"0"})",
                            R"({"serialNumber":"#","state":"0"})"},
                    TextRow{"OddCharacters", L"a \"b\" \u00e4",
                            R"(["a \"b\" )"
                            "\xc3\xa4"
                            R"("])",
                            R"(["#"])"},
                    TextRow{"LinesOfMetrics", L"QV48", "up{disk=\"QV48\"} 1\n", "up{disk=\"#\"} 1\n"}),
    ByName());

TEST(Mask, MasksIdsWhereverTheyStand) {
  const Mask mask = maskOf(L"S");
  const std::string id = maskOf(kId, mask);
  EXPECT_EQ(mask.masked(R"(["disk-failed-12345678901234567890","p1.2.12345678901234567890"])"),
            "[\"disk-failed-" + id + "\",\"p1.2." + id + "\"]");
  EXPECT_EQ(mask.masked(R"(["123456789012345678901", "1234567890123456789"])"),
            R"(["123456789012345678901", "1234567890123456789"])");
  EXPECT_EQ(mask.maskedName("api/v1/arrays/12345678901234567890/volumes"),
            "api/v1/arrays/" + id + "/volumes");
}

TEST(Mask, KnowsWhatHasGoneFromWhatIsToldOfIt) {
  Mask mask("key");
  mask.learn(std::string(R"({"items":[
    {"object":{"type":"disk","id":"98765432109876543210","name":"SATA GONE1"},"text":"Disk SATA GONE1 failed."},
    {"event_source":"DISK","event_source_name":"NVMe GONE2"},
    {"event_source":"VOLUME","event_source_name":"My volume"},
    {"volumeId":"11111111111111111111","controllerIds":["22222222222222222222"],"vendorId":"8086"}]})"));
  const std::string masked = mask.masked(
      R"(["SATA GONE1","GONE2","98765432109876543210","11111111111111111111","22222222222222222222"])");
  for (const char* const gone : {"GONE", "9876543210", "11111111", "22222222"}) {
    EXPECT_EQ(masked.find(gone), std::string::npos) << masked;
  }
  EXPECT_EQ(mask.masked(R"(["My volume","8086"])"), R"(["My volume","8086"])");
  EXPECT_NO_THROW(mask.learn(std::string("no JSON")));
}

TEST(Mask, KnowsWhatAListTellsOfOtherDevices) {
  Mask mask("key");
  const std::string list =
      R"([{"id":"123","serialNumber":"OPT \"0417\""},{"id":null,"serialNumber":""},{"serialNumber":"END)";
  mask.learnList(list);
  const std::string masked = mask.masked(list);
  EXPECT_EQ(masked.find("OPT"), std::string::npos);
  EXPECT_EQ(masked.find("123"), std::string::npos);
  EXPECT_THAT(masked, testing::HasSubstr(R"({"id":null,"serialNumber":""},{"serialNumber":"END)"));
}

TEST(Mask, WhatIsNotKnownStays) {
  const std::string text = R"({"size":"1000204886016","n":12,"text":"\\\"\u00e4 \\"})";
  EXPECT_EQ(Mask("key").masked(text), text);
}

}  // namespace

}  // namespace host
