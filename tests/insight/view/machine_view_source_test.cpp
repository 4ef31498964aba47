#include "view/machine_view_source.h"

#include <gtest/gtest.h>

#include <future>
#include <vector>

namespace insight {
namespace {

using ovra::data_transfer::ServiceObject;

/// Counts its pictures, each of which takes its time.
class CountingPlugin final : public ovra::watched_plugin_1 {
 public:
  ovra::PluginPosition position() override { return current; }
  bool waitForChange(const ovra::PluginPosition&, std::int64_t) override { return false; }
  ServiceObject eventsAfter(std::uint64_t, std::uint64_t) override { return {}; }

  ServiceObject picture() override {
    ++pictures;
    *clock += making;
    ServiceObject picture;
    ServiceObject& told = picture.member(L"position");
    told.member(L"epoch") = current.epoch;
    told.member(L"revision") = current.revision;
    told.member(L"structure") = current.structure;
    told.member(L"sequence") = current.sequence;
    return picture;
  }

  ovra::PluginPosition current{L"0123456789abcdef", 1, 1, 1};
  int pictures = 0;
  MachineViewSource::Moment* clock = nullptr;
  std::chrono::milliseconds making{100};
};

class ViewSource : public testing::Test {
 protected:
  ViewSource() { m_plugin.clock = &m_now; }

  CountingPlugin m_plugin;
  MachineViewSource::Moment m_now;
  MachineViewSource m_source{m_plugin, [this] { return m_now; }};
};

TEST_F(ViewSource, MakesOneViewOfAPosition) {
  const auto first = m_source.view();
  EXPECT_EQ(m_source.view(), first);
  EXPECT_EQ(m_plugin.pictures, 1);
  EXPECT_EQ(first->position.revision, 1U);
}

TEST_F(ViewSource, MakesAnotherForEachOtherPosition) {
  m_source.view();
  m_plugin.current.revision = 2;
  EXPECT_EQ(m_source.view()->position.revision, 2U);
  m_plugin.current.sequence = 2;
  EXPECT_EQ(m_source.view()->position.sequence, 2U);
  m_plugin.current.epoch = L"fedcba9876543210";
  EXPECT_EQ(m_source.view()->position.epoch, L"fedcba9876543210");
  EXPECT_EQ(m_plugin.pictures, 4);
}

TEST_F(ViewSource, LooksAgainAfterAWhileSinceTimesChangeWithoutARevision) {
  m_source.view();
  m_now += std::chrono::milliseconds(999);
  m_source.view();
  EXPECT_EQ(m_plugin.pictures, 1);
  m_now += std::chrono::milliseconds(1);
  m_source.view();
  EXPECT_EQ(m_plugin.pictures, 2) << "ten times as long as it took to make";
}

TEST_F(ViewSource, OfALargeMachineLooksAgainAfterTwoSeconds) {
  m_plugin.making = std::chrono::seconds(1);
  m_source.view();
  m_now += MachineViewSource::kLongestUse - std::chrono::milliseconds(1);
  m_source.view();
  EXPECT_EQ(m_plugin.pictures, 1);
  m_now += std::chrono::milliseconds(1);
  m_source.view();
  EXPECT_EQ(m_plugin.pictures, 2);
}

TEST_F(ViewSource, OfAStructureMakesAnotherForAnotherStructureAlone) {
  m_source.viewOfStructure();
  m_plugin.current.revision = 2;
  m_plugin.current.sequence = 2;
  m_now += std::chrono::hours(1);
  EXPECT_EQ(m_source.viewOfStructure()->position.revision, 1U);
  EXPECT_EQ(m_plugin.pictures, 1);
  m_plugin.current.structure = 2;
  EXPECT_EQ(m_source.viewOfStructure()->position.revision, 2U);
  m_plugin.current.epoch = L"fedcba9876543210";
  m_source.viewOfStructure();
  EXPECT_EQ(m_plugin.pictures, 3);
}

TEST_F(ViewSource, HasOneMakerForWhoeverAsks) {
  std::vector<std::future<std::shared_ptr<const MachineView>>> asked;
  for (int number = 0; number < 8; ++number) {
    asked.push_back(std::async(std::launch::async, [this] { return m_source.view(); }));
  }
  for (auto& each : asked) EXPECT_EQ(each.get(), m_source.view());
  EXPECT_EQ(m_plugin.pictures, 1);
}

}  // namespace
}  // namespace insight
