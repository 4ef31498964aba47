#include "bundle/bundle_endpoint.h"

#include <gmock/gmock.h>

#include <future>

#include "host/api/mock_plugin.h"
#include "host/insight/told_host.h"
#include "host/net/listening_client.h"

namespace host {

namespace {

using testing::HasSubstr;
using testing::NiceMock;

constexpr char kAdministers[] = "Authorization: Bearer administer\r\n";

/// A host whose plug-in answers as soon as it is let.
class BundleEndpointTest : public testing::Test {
 protected:
  BundleEndpointTest() {
    EndpointTable table;
    ApiEndpoint read;
    read.operation = "listVolumes";
    read.method = "GET";
    read.path = L"api/v1/mirn/volumes";
    read.role = Role::kObserve;
    read.handle = [answer = m_answer.get_future().share()](const Call&, const std::string&) {
      answer.wait();
      return jsonAnswer("[]");
    };
    table.add(std::move(read));
    const auto subject = std::make_shared<BundleSubject>(BundleSubject{m_plugin});
    addBundleEndpoint(table, subject);
    subject->operations.learn(table);
    m_served = std::make_unique<ServedTable>(std::move(table), m_tokens);
  }

  std::unique_ptr<ListeningClient> ask(const std::string& fields = kAdministers) {
    auto client = std::make_unique<ListeningClient>(m_served->port());
    client->get("/api/v1/bundle", fields + "Connection: close\r\n");
    return client;
  }
  void letAnswer() { m_answer.set_value(); }

  std::promise<void> m_answer;
  RoleTokens m_tokens;
  NiceMock<MockPlugin> m_plugin;
  std::unique_ptr<ServedTable> m_served;
};

TEST_F(BundleEndpointTest, TwoAreMadeAtOnce) {
  const auto one = ask();
  const auto other = ask();
  ASSERT_TRUE(one->await("\r\n\r\n"));
  ASSERT_TRUE(other->await("\r\n\r\n"));
  const auto third = ask();
  EXPECT_TRUE(third->awaitEnd());
  EXPECT_THAT(third->text(), HasSubstr("HTTP/1.1 503 "));
  EXPECT_THAT(third->text(), HasSubstr("\r\nRetry-After: 10\r\n"));
  letAnswer();
  for (const auto* const client : {&one, &other}) {
    EXPECT_TRUE((*client)->awaitEnd());
    EXPECT_TRUE((*client)->isWhole());
    EXPECT_THAT((*client)->text(), HasSubstr("\r\nContent-Type: application/gzip\r\n"));
  }
  const auto next = ask();
  EXPECT_TRUE(next->awaitEnd());
  EXPECT_THAT(next->text(), HasSubstr("HTTP/1.1 200 "));
}

TEST_F(BundleEndpointTest, IsForWhoAdministers) {
  letAnswer();
  const auto client = ask("Authorization: Bearer observe\r\n");
  EXPECT_TRUE(client->awaitEnd());
  EXPECT_THAT(client->text(), HasSubstr("HTTP/1.1 403 "));
}

TEST_F(BundleEndpointTest, ARevokedTokenCutsItOff) {
  const auto client = ask();
  ASSERT_TRUE(client->await("\r\n\r\n"));
  m_tokens.isOpen = false;
  letAnswer();
  client->awaitEnd();
  EXPECT_FALSE(client->isWhole());
}

}  // namespace

}  // namespace host
