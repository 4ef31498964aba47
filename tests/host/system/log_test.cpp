#include "system/log.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "support/by_name.h"

namespace host {

namespace {

using namespace std::chrono_literals;

constexpr std::int64_t kMoment = 17'953'094'450'070'000;  // ticks

RequestRecord requestFor(const std::string& target) {
  return {"192.0.2.7", "ann", "listVolumes", "GET", target, 200, 12, 1500us};
}

TEST(RequestLog, IsAnObjectALine) {
  EXPECT_EQ(
      lineOf(requestFor("/api/v1/mirn/volumes"), kMoment),
      R"({"log":"request","time":"2026-11-22T01:04:05.007Z","client":"192.0.2.7","identity":"ann",)"
      R"("operation":"listVolumes","method":"GET","target":"/api/v1/mirn/volumes","status":200,"bytes":12,)"
      R"("microseconds":1500})");
}

TEST(RequestLog, LeavesOutWhatIsNotKnown) {
  RequestRecord record;
  record.status = 400;
  const auto line = boost::json::parse(lineOf(record, kMoment)).as_object();
  for (const char* const name : {"client", "identity", "operation", "method", "target"}) {
    EXPECT_EQ(line.count(name), 0U) << name;
  }
}

struct TextRow {
  std::string name;
  std::string target;
  std::string logged;  // as it stands in the line
};

class LoggedTarget : public testing::TestWithParam<TextRow> {};

TEST_P(LoggedTarget, IsWithoutTokensAndControlCharacters) {
  const std::string line = lineOf(requestFor(GetParam().target), kMoment);
  EXPECT_NE(line.find("\"target\":\"" + GetParam().logged + "\","), std::string::npos) << line;
  for (const char character : line) {
    EXPECT_TRUE(static_cast<unsigned char>(character) >= 0x20 && character != 0x7F) << line;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, LoggedTarget,
    testing::Values(
        TextRow{"Token", "/a?access_token=secret", "/a?access_token=***"},
        TextRow{"TokenBetweenOthers", "/a?b=1&access_token=secret&c=2", "/a?b=1&access_token=***&c=2"},
        TextRow{"EncodedName", "/a?access%5Ftoken=secret", "/a?access%5Ftoken=***"},
        TextRow{"NameWithMore", "/a?x?Access_Token=secret", "/a?x?Access_Token=***"},
        TextRow{"TokenTwice", "/a?access_token=s&access_token=t", "/a?access_token=***&access_token=***"},
        TextRow{"OtherParameters", "/a?b=1&c", "/a?b=1&c"}, TextRow{"HalfAnEncoding", "/a?b%5", "/a?b%5"},
        TextRow{"LineEnd", "/a\r\nb", "/a\\r\\nb"}, TextRow{"Escape", "/a\x1B[31m", "/a\\u001b[31m"},
        TextRow{"Delete", "/a\x7F", "/a\\u007f"}, TextRow{"SecondControls", "/a\xC2\x9B", "/a\\u009b"},
        TextRow{"Text", "/ü\xC2\xA0", "/ü\xC2\xA0"}, TextRow{"NotUtf8", "/a\xFF", "/a?"},
        TextRow{"Quote", "/a\"", "/a\\\""}),
    ByName());

TEST(LoggedTarget, IsBounded) {
  EXPECT_LT(lineOf(requestFor("/" + std::string(100000, 'x')), kMoment).size(), 2000U);
}

TEST(AuditLog, IsAnObjectALine) {
  const AuditRecord record{"192.0.2.7", "ann", "renameVolume", {{"volumeId", "7"}}, 409, "In use"};
  EXPECT_EQ(lineOf(record, kMoment),
            R"({"log":"audit","time":"2026-11-22T01:04:05.007Z","client":"192.0.2.7","identity":"ann",)"
            R"("operation":"renameVolume","objects":{"volumeId":"7"},"outcome":"refused","status":409,)"
            R"("reason":"In use"})");
}

}  // namespace

}  // namespace host
