#include "metrics/insight_metrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "insight/metrics/metric_lines.h"
#include "insight/service/scripted_plugin.h"

namespace insight {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr std::int64_t kStart = 1'700'000'000'000;

/// A plug-in that tells of no operations and no words.
ovra::data_transfer::ServiceObject describedNothing() {
  ovra::data_transfer::ServiceObject description;
  description.member(L"routes") = ovra::data_transfer::ServiceObject::array();
  return description;
}

class Measured : public testing::Test {
 protected:
  Measured() { become(10); }

  void become(std::uint64_t percent, std::int64_t takenAt = kStart) {
    ScriptedPlugin::Machine machine;
    machine.volumeState = machine.work = L"REBUILDING";
    machine.percent = percent;
    machine.takenAt = takenAt;
    m_plugin.become(machine);
  }

  std::string written() {
    MetricText text;
    m_metrics.write(text);
    return text.take();
  }

  /// Once nothing waits for the history any more.
  std::string settled() {
    for (;;) {
      const std::string text = written();
      if (text.find("mirn_history_queued_entries 0\n") != std::string::npos) return text;
      std::this_thread::yield();
    }
  }

  ScriptedPlugin m_plugin;
  MachineViewSource m_views{m_plugin};
  InsightService m_service{m_plugin, m_views, describedNothing(), {{}, [] { return kStart; }, {}}};
  InsightMetrics m_metrics{m_service, describedNothing()};
};

TEST_F(Measured, AreOfTheMachineAsItWasLastSeen) {
  m_service.look();
  EXPECT_THAT(written(), HasSubstr("mirn_volume_work_steps_done{volume=\"V\",work=\"rebuild\"} 10\n"));
  become(20);
  EXPECT_THAT(written(), HasSubstr("mirn_volume_work_steps_done{volume=\"V\",work=\"rebuild\"} 10\n"));
  m_service.look();
  EXPECT_THAT(written(), HasSubstr("mirn_volume_work_steps_done{volume=\"V\",work=\"rebuild\"} 20\n"));
}

TEST_F(Measured, HaveAHealthThatIsUnknownBeforeTheFirstLook) {
  EXPECT_THAT(written(), HasSubstr("mirn_health{severity=\"unknown\"} 1\n"));
  EXPECT_THAT(written(), Not(HasSubstr("mirn_volume_info")));
}

TEST_F(Measured, TellEachFamilyOnce) {
  m_service.look();
  const std::string text = written();
  std::map<std::string, int> families;
  for (std::size_t at = text.find("# TYPE "); at != std::string::npos; at = text.find("# TYPE ", at + 1)) {
    ++families[text.substr(at, text.find('\n', at) - at)];
  }
  EXPECT_GT(families.size(), 20U);
  for (const auto& [family, count] : families) EXPECT_EQ(count, 1) << family;
}

TEST_F(Measured, AskThePluginNothing) {
  m_service.look();
  const std::string before = settled();
  m_plugin.failToTell(true);
  EXPECT_EQ(written(), before);
}

}  // namespace
}  // namespace insight
