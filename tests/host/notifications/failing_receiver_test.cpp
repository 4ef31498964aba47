#include <gmock/gmock.h>

#include <atomic>
#include <boost/json/parse.hpp>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "actions/operation.h"
#include "atomic_file.h"
#include "host/api/mock_plugin.h"
#include "host/insight/told_host.h"
#include "host/net/listening_client.h"
#include "insight/insight_desk.h"
#include "insight/insight_endpoints.h"
#include "insight/service/scripted_plugin.h"
#include "notifications/notifier.h"
#include "notifications/webhook.h"
#include "notifications/webhook_url.h"
#include "service/insight_service.h"
#include "support/temporary_folder.h"
#include "view/machine_view_source.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;
using std::chrono::seconds;

constexpr std::int64_t kNowMs = 1'700'000'000'000;
constexpr seconds kPatience{30};

class NothingRehearsed final : public ovra::rehearsed_plugin_1 {
 public:
  ServiceObject rehearse(std::wstring, std::int32_t, std::vector<std::wstring>,
                         std::map<std::wstring, std::wstring>, ServiceObject) override {
    return {};
  }
  ServiceObject rehearseEach(std::wstring, std::int32_t, std::vector<std::wstring>,
                             std::map<std::wstring, std::wstring>, ServiceObject, std::wstring,
                             std::vector<ServiceObject>) override {
    return {};
  }
};

ServiceObject nothingDescribed() {
  ServiceObject description;
  description.member(L"routes") = ServiceObject::array();
  return description;
}

/// Takes posts, or is out of order.
class Receiver {
 public:
  Receiver() {
    ApiEndpoint hook;
    hook.operation = "hook";
    hook.method = "POST";
    hook.path = L"api/v1/hook";
    hook.handle = [this](const Call&, const std::string&) -> Answer {
      ++tries;
      if (!takes) throw Refusal(503, "Out of order");
      return jsonAnswer("{}");
    };
    EndpointTable table;
    table.add(std::move(hook));
    m_served = std::make_unique<ServedTable>(std::move(table), m_tokens);
  }

  std::string url() const { return "http://127.0.0.1:" + std::to_string(m_served->port()) + "/api/v1/hook"; }

  std::atomic<bool> takes{false};
  std::atomic<int> tries{0};

 private:
  RoleTokens m_tokens;
  std::unique_ptr<ServedTable> m_served;
};

/// A host on a machine with a failed disk, and the only one that it tells of it; the test has the clock.
class FailingReceiverTest : public testing::Test {
 protected:
  FailingReceiverTest() {
    m_plugin.become(machineWith(L"FAILED"));
    m_notifier->start([this](const insight::ServiceNote& note) { m_desk->service->note(note); });
    m_desk->service->tellAlarmsTo(m_notifier);
    EndpointTable table;
    addInsightEndpoints(table, m_desk, 1);
    m_served = std::make_unique<ServedTable>(std::move(table), m_tokens);
    m_desk->service->look();
  }
  ~FailingReceiverTest() override { m_notifier->stop(); }

  static insight::ScriptedPlugin::Machine machineWith(const std::wstring& diskState) {
    insight::ScriptedPlugin::Machine machine;
    machine.diskState = diskState;
    machine.takenAt = kNowMs;
    return machine;
  }

  std::shared_ptr<InsightDesk> makeDesk() {
    auto views = std::make_shared<insight::MachineViewSource>(m_plugin);
    auto service = std::make_shared<insight::InsightService>(
        m_plugin, *views, nothingDescribed(), insight::InsightService::Settings{{}, [] { return kNowMs; }});
    return std::make_shared<InsightDesk>(
        InsightDesk{m_named, m_plugin, m_rehearsed, std::move(views),
                    std::make_shared<const std::vector<insight::Operation>>(), std::move(service), nullptr});
  }

  std::shared_ptr<Notifier> makeNotifier() {
    const std::string secret = (m_folder / "secret").string();
    makePrivateFile(std::filesystem::u8path(secret), "It is a secret, 32 bytes long. :)");
    Notifier::Targets targets;
    targets.push_back(std::make_unique<Webhook>(WebhookTarget{webhookUrlOf(m_receiver.url()), secret, {}}, 1,
                                                Webhook::Settings{kPatience, currentTicks, "mirn-host"}));
    Notifier::Settings settings;
    settings.clock = [this] { return now(); };
    return std::make_shared<Notifier>(std::move(targets), std::move(settings));
  }

  DeliveryQueue::Moment now() const { return DeliveryQueue::Moment(m_passed.load()); }

  /// To the next try, once the one under way has come to its end; false where nothing is left to tell.
  bool passToNextTry() {
    std::optional<DeliveryQueue::Moment> turn;
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    while ((turn = m_notifier->nextTurn(0)) && *turn <= now() &&
           std::chrono::steady_clock::now() < deadline) {
      std::this_thread::yield();
    }
    if (!turn) return false;
    m_passed = turn->time_since_epoch();
    m_notifier->wake();
    return true;
  }

  boost::json::array ask(const std::string& what, const std::string& member) {
    ListeningClient client(m_served->port());
    client.get("/api/v1/" + what, "Authorization: Bearer observe\r\nConnection: close\r\n");
    EXPECT_TRUE(client.awaitEnd());
    const std::string text = client.text();
    return boost::json::parse(text.substr(text.find("\r\n\r\n") + 4)).at(member).as_array();
  }

  /// What is told under the id of it now, if anything.
  std::optional<boost::json::object> told(const std::string& what, const std::string& member) {
    for (const auto& each : ask(what, member)) {
      if (each.at("id").as_string() == "notification") return each.as_object();
    }
    return {};
  }
  std::optional<boost::json::object> cause() {
    m_desk->service->look();
    return told("health", "causes");
  }

  TemporaryFolder m_folder;
  std::atomic<DeliveryQueue::Duration> m_passed{seconds(1'000'000)};
  insight::ScriptedPlugin m_plugin;
  testing::NiceMock<MockPlugin> m_named;
  NothingRehearsed m_rehearsed;
  Receiver m_receiver;
  RoleTokens m_tokens;
  const std::shared_ptr<InsightDesk> m_desk = makeDesk();
  const std::shared_ptr<Notifier> m_notifier = makeNotifier();
  std::unique_ptr<ServedTable> m_served;
};

TEST_F(FailingReceiverTest, IsACauseOfHealthUntilItTakesWhatItIsTold) {
  const auto begin = now();
  while (now() - begin < seconds(60)) {
    EXPECT_FALSE(cause()) << (now() - begin).count();
    ASSERT_TRUE(passToNextTry());
  }
  EXPECT_GE(m_receiver.tries, 6);
  const auto found = cause();
  ASSERT_TRUE(found);
  EXPECT_EQ(found->at("kind"), "notification");
  EXPECT_EQ(found->at("severity"), "warning");
  EXPECT_EQ(std::string(found->at("text").as_string()),
            "Alarms are not told: webhook 1 (" + m_receiver.url().substr(0, m_receiver.url().find("/api")) +
                "): it answers with the status 503.");
  const auto alarm = told("alarms", "items");
  ASSERT_TRUE(alarm);
  EXPECT_EQ(alarm->at("text"), found->at("text"));

  m_receiver.takes = true;
  while (passToNextTry()) {
  }
  EXPECT_FALSE(cause());
  EXPECT_FALSE(told("alarms", "items"));
  bool isDiskTold = false;
  for (const auto& each : ask("health", "causes")) isDiskTold |= each.at("id") == "disk-failed-D2";
  EXPECT_TRUE(isDiskTold);
}

}  // namespace

}  // namespace host
