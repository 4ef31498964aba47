#include "identity/token_lines.h"

#include <gtest/gtest.h>

#include "support/by_name.h"

namespace host {

namespace {

const std::string kHashA(64, 'a');
const std::string kHashB(64, 'b');
const std::string kTime = "2026-01-31T12:00:00.000Z";
const std::string kGood = "backup observe " + kHashA + " " + kTime;

TEST(TokenLines, AreReadInTheirOrder) {
  const TokenLines lines("# who may\n\n" + kGood + "\r\nnight.shift@site operate\t" + kHashB + "  " + kTime);
  EXPECT_TRUE(lines.faults().empty());
  const auto entries = lines.entries();
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].name, "backup");
  EXPECT_EQ(entries[0].role, Role::kObserve);
  EXPECT_EQ(entries[0].hash, kHashA);
  EXPECT_EQ(entries[0].created, kTime);
  EXPECT_EQ(entries[1].name, "night.shift@site");
  EXPECT_EQ(entries[1].role, Role::kOperate);
}

TEST(TokenLines, AreWrittenAsTheyWereRead) {
  const std::string text = "# who may\n\n" + kGood + "\nwhat is this\n";
  EXPECT_EQ(TokenLines(text).text(), text);
  EXPECT_EQ(TokenLines("").text(), "");
}

TEST(TokenLines, ATokenComesBehindTheOthers) {
  TokenLines lines("broken\n");
  lines.add({"backup", Role::kObserve, kHashA, kTime});
  EXPECT_EQ(lines.text(), "broken\n" + kGood + "\n");
  ASSERT_TRUE(lines.find("backup"));
  EXPECT_EQ(lines.find("backup")->hash, kHashA);
  EXPECT_FALSE(lines.find("broken"));
}

TEST(TokenLines, ATokenGoesAndNothingElse) {
  TokenLines lines("# note\nbroken\n" + kGood + "\nother operate " + kHashB + " " + kTime + "\n");
  EXPECT_TRUE(lines.remove("backup"));
  EXPECT_EQ(lines.text(), "# note\nbroken\nother operate " + kHashB + " " + kTime + "\n");
  EXPECT_FALSE(lines.remove("backup"));
  EXPECT_FALSE(lines.remove("broken"));
}

TEST(TokenLines, TheFirstOfAName) {
  const TokenLines lines(kGood + "\nbackup administer " + kHashB + " " + kTime + "\n");
  ASSERT_EQ(lines.entries().size(), 1U);
  EXPECT_EQ(lines.entries()[0].role, Role::kObserve);
  ASSERT_EQ(lines.faults().size(), 1U);
  EXPECT_EQ(lines.faults()[0].line, 2U);
  EXPECT_EQ(lines.faults()[0].reason, "the name stands in line 1 already");
}

TEST(TokenLines, TheFirstOfAToken) {
  const TokenLines lines(kGood + "\nother administer " + kHashA + " " + kTime + "\n");
  ASSERT_EQ(lines.entries().size(), 1U);
  EXPECT_EQ(lines.entries()[0].role, Role::kObserve);
  ASSERT_EQ(lines.faults().size(), 1U);
  EXPECT_EQ(lines.faults()[0].reason, "the token stands in line 1 already");
  EXPECT_TRUE(lines.hasLineOf("other"));
  EXPECT_FALSE(lines.hasLineOf("another"));
}

TEST(TokenLines, WhatRepeatsARevokedTokenGoesWithIt) {
  TokenLines lines(kGood + "\nbackup administer " + kHashB + " " + kTime + "\nother administer " + kHashA +
                   " " + kTime + "\n");
  EXPECT_TRUE(lines.remove("backup"));
  EXPECT_EQ(lines.text(), "");
}

TEST(TokenLines, WhatWasRefusedForARefusedLineNeverComesToCount) {
  TokenLines lines(kGood + "\nother operate " + kHashA + " " + kTime + "\nother administer " + kHashB + " " +
                   kTime + "\n");
  EXPECT_TRUE(lines.remove("backup"));
  EXPECT_EQ(lines.text(), "");
}

TEST(TokenLines, ALineThatCountsStaysWhereOneGoesThatRepeatsItsName) {
  const std::string other = "other operate " + kHashB + " " + kTime + "\n";
  TokenLines lines(other + kGood + "\nother administer " + kHashA + " " + kTime + "\n");
  EXPECT_TRUE(lines.remove("backup"));
  EXPECT_EQ(lines.text(), other);
}

struct FaultRow {
  std::string name;
  std::string line;
  std::string reason;
};

class TokenFaultTest : public testing::TestWithParam<FaultRow> {};

TEST_P(TokenFaultTest, IsToldWithItsLine) {
  const TokenLines lines("# one\n" + GetParam().line + "\n");
  EXPECT_TRUE(lines.entries().empty());
  ASSERT_EQ(lines.faults().size(), 1U);
  EXPECT_EQ(lines.faults()[0].line, 2U);
  EXPECT_EQ(lines.faults()[0].reason, GetParam().reason);
}

const char kForm[] = "it is not NAME ROLE SHA256 CREATED";
const char kName[] = "the name is not 1 to 64 letters, digits, - _ . @, a letter or digit first";
const char kRole[] = "the role is not observe, operate or administer";
const char kHash[] = "the hash is not 64 lower hexadecimal digits";
const char kMoment[] = "the time is not of the form 2026-01-31T12:00:00.000Z";

INSTANTIATE_TEST_SUITE_P(
    Lines, TokenFaultTest,
    testing::Values(FaultRow{"OneWord", "backup", kForm},
                    FaultRow{"ThreeWords", "backup observe " + kHashA, kForm},
                    FaultRow{"FiveWords", kGood + " x", kForm}, FaultRow{"BlankAhead", " " + kGood, kForm},
                    FaultRow{"BlankBehind", kGood + " ", kForm},
                    FaultRow{"TooLong", std::string(500, 'x') + " observe " + kHashA + " " + kTime, kForm},
                    FaultRow{"NameOfMarks", "-x observe " + kHashA + " " + kTime, kName},
                    FaultRow{"NameTooLong", std::string(65, 'x') + " observe " + kHashA + " " + kTime, kName},
                    FaultRow{"NameOfOtherLetters", "\xC3\xA4 observe " + kHashA + " " + kTime, kName},
                    FaultRow{"NameWithZero", std::string("a\0b", 3) + " observe " + kHashA + " " + kTime,
                             kName},
                    FaultRow{"Role", "backup root " + kHashA + " " + kTime, kRole},
                    FaultRow{"RoleInCapitals", "backup OBSERVE " + kHashA + " " + kTime, kRole},
                    FaultRow{"HashTooShort", "backup observe " + std::string(63, 'a') + " " + kTime, kHash},
                    FaultRow{"HashInCapitals", "backup observe " + std::string(64, 'A') + " " + kTime, kHash},
                    FaultRow{"NoHash", "backup observe " + std::string(64, 'g') + " " + kTime, kHash},
                    FaultRow{"Day", "backup observe " + kHashA + " 2026-01-31", kMoment},
                    FaultRow{"OtherZone", "backup observe " + kHashA + " 2026-01-31T12:00:00.000+", kMoment}),
    ByName());

TEST(TokenName, Is) {
  EXPECT_TRUE(isTokenName("a"));
  EXPECT_TRUE(isTokenName("7-of_9.x@y"));
  EXPECT_TRUE(isTokenName(std::string(64, 'x')));
  EXPECT_FALSE(isTokenName(""));
  EXPECT_FALSE(isTokenName("a b"));
  EXPECT_FALSE(isTokenName("#a"));
  EXPECT_FALSE(isTokenName("@a"));
}

TEST(TokenLines, ALineWithSeveralReturnsCountsTheSameWhenItIsWrittenAgain) {
  const TokenLines lines(kGood + "\r\r\n\r\r");
  EXPECT_EQ(lines.entries().size(), 1U);
  EXPECT_TRUE(lines.faults().empty());
  const TokenLines again(lines.text());
  EXPECT_EQ(again.entries().size(), 1U);
  EXPECT_TRUE(again.faults().empty());
}

}  // namespace

}  // namespace host
