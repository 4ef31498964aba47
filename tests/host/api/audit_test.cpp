#include "api/audit.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace host {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

class AuditTest : public testing::Test {
 protected:
  /// The line that a change with this end leaves.
  template <class Run>
  std::string lineAfter(Run run, const std::string& body = R"({"diskId": "9"})") {
    ApiEndpoint endpoint;
    endpoint.operation = "rebuildVolume";
    endpoint.references = {L"diskId"};
    const EndpointTable::Resource resource{PathTemplate(L"volumes/{volumeId}"), {}};
    RequestHead head;
    head.client.address = "127.0.0.1";
    const Call call{{{L"volumes", L"7"}, {}}, {"ann", Role::kOperate}};
    const auto change = audited(run, auditRecordOf(head, call, resource, endpoint), endpoint);
    testing::internal::CaptureStderr();
    try {
      change(body);
    } catch (const std::exception&) {
      m_hasRaised = true;
    }
    return testing::internal::GetCapturedStderr();
  }

  bool m_hasRaised = false;
};

TEST_F(AuditTest, TellsWhoDidWhatToWhat) {
  const std::string line = lineAfter([](const std::string&) { return jsonAnswer("{}"); });
  EXPECT_THAT(line, HasSubstr(R"("client":"127.0.0.1","identity":"ann","operation":"rebuildVolume",)"
                              R"("objects":{"diskId":"9","volumeId":"7"},"outcome":"done","status":200})"));
  EXPECT_EQ(line.find('\n'), line.size() - 1);
}

TEST_F(AuditTest, TellsWhyItWasRefused) {
  const std::string line = lineAfter([](const std::string&) -> Answer {
    return failureAnswer(ListenerException("Mirn_VOLUME_INVALID_STATE", "It is whole"));
  });
  EXPECT_THAT(line, HasSubstr(R"("outcome":"refused","status":409,"reason":"It is whole"})"));
}

TEST_F(AuditTest, TellsAFailureThatLeavesAsAnException) {
  const std::string line =
      lineAfter([](const std::string&) -> Answer { throw Refusal(400, "No JSON"); }, "{");
  EXPECT_TRUE(m_hasRaised);
  EXPECT_THAT(
      line, HasSubstr(R"("objects":{"volumeId":"7"},"outcome":"refused","status":400,"reason":"No JSON"})"));
}

TEST(AuditReferences, AreTheNamedMembers) {
  EXPECT_THAT(
      referencesIn(R"({"disks": ["1", "2"], "name": "x", "arrayId": 7})", {L"disks", L"arrayId", L"other"}),
      ElementsAre(Pair("arrayId", "7"), Pair("disks", "1,2")));
  EXPECT_THAT(referencesIn("[1]", {L"disks"}), IsEmpty());
  EXPECT_THAT(referencesIn("", {L"disks"}), IsEmpty());
}

}  // namespace

}  // namespace host
