#include "metrics/machine_metrics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "insight/machine/small_machine.h"
#include "insight/metrics/metric_lines.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

MachineWords someWords() {
  MachineWords words;
  words.service = StateWords({"WARNING", "NORMAL", "FAILED"});
  words.array = StateWords({"NORMAL", "STATE_BUSY"});
  words.volume = StateWords({"NORMAL", "DEGRADED", "REBUILDING"});
  words.disk = StateWords({"OFFLINE", "FAILED", "NORMAL"});
  words.usage = StateWords({"ARRAY_MEMBER", "SPARE"});
  return words;
}

MetricText metricsOf(const MachineView& machine) {
  MetricText text;
  writeMachine(text, machine, someWords());
  return text;
}

/// A small machine after something was done to it.
MachineView machineAfter(void (*change)(MachineView&)) {
  MachineView machine = smallMachine();
  change(machine);
  machine.index();
  return machine;
}

/// Of each object of a family with states, the sum of its lines.
std::map<std::string, int> sumsOf(const MetricText& text, const std::string& family,
                                  const std::string& label) {
  std::map<std::string, int> sums;
  const std::regex state(",?" + label + "=\"[^\"]*\"");
  for (const auto& [name, value] : samplesOf(text, family)) {
    sums[std::regex_replace(name, state, "")] += std::stoi(value);
  }
  return sums;
}

struct StateFamily {
  const char* name;
  const char* label;
  std::size_t objects;
};

void PrintTo(const StateFamily& row, std::ostream* stream) { *stream << row.name; }

class OneHot : public testing::TestWithParam<StateFamily> {
 protected:
  void expectOneEach(const MachineView& machine) {
    const auto sums = sumsOf(metricsOf(machine), GetParam().name, GetParam().label);
    EXPECT_THAT(sums, SizeIs(GetParam().objects));
    for (const auto& [object, sum] : sums) EXPECT_EQ(sum, 1) << object;
  }
};

TEST_P(OneHot, HasOneStateOfEachObject) { expectOneEach(smallMachine()); }

TEST_P(OneHot, HasOneStateOfEachObjectOfWhichNothingIsKnown) {
  expectOneEach(machineAfter([](MachineView& machine) {
    machine.serviceState.clear();
    machine.arrays.front().state = L"UNKNOWN";
    machine.volumes.front().state = L"NO_SUCH_STATE";
    for (DiskView& disk : machine.disks) disk.state = disk.usage = L"UNKNOWN";
  }));
}

TEST_P(OneHot, TellsTheFirstOfObjectsWithOneId) {
  expectOneEach(machineAfter([](MachineView& machine) {
    machine.arrays.push_back(machine.arrays.front());
    machine.volumes.push_back(machine.volumes.front());
    machine.disks.push_back(machine.disks.front());
  }));
}

INSTANTIATE_TEST_SUITE_P(Families, OneHot,
                         testing::Values(StateFamily{"mirn_state", "state", 1},
                                         StateFamily{"mirn_array_state", "state", 1},
                                         StateFamily{"mirn_volume_state", "state", 1},
                                         StateFamily{"mirn_disk_state", "state", 4},
                                         StateFamily{"mirn_disk_usage", "usage", 4}));

TEST(MachineMetrics, TellTheStateThatAnObjectHas) {
  const MachineView machine = machineAfter([](MachineView& each) { each.disks[1].state = L"FAILED"; });
  const auto states = samplesOf(metricsOf(machine), "mirn_disk_state");
  EXPECT_EQ(states.at(R"(mirn_disk_state{disk="D1",state="FAILED"})"), "1");
  EXPECT_EQ(states.at(R"(mirn_disk_state{disk="D1",state="NORMAL"})"), "0");
  EXPECT_EQ(states.at(R"(mirn_disk_state{disk="D0",state="NORMAL"})"), "1");
  EXPECT_EQ(states.at(R"(mirn_disk_state{disk="D0",state="unknown"})"), "0");
}

TEST(MachineMetrics, BeforeTheFirstPictureTheStateIsUnknown) {
  MachineView machine;
  machine.serviceState = L"NORMAL";
  EXPECT_EQ(samplesOf(metricsOf(machine)).at(R"(mirn_state{state="unknown"})"), "1");
  EXPECT_EQ(samplesOf(metricsOf(machine)).at(R"(mirn_state{state="NORMAL"})"), "0");
}

TEST(MachineMetrics, CountTheObjectsOfEachKind) {
  EXPECT_THAT(
      samplesOf(metricsOf(smallMachine()), "mirn_objects"),
      ElementsAre(Pair(R"(mirn_objects{kind="array"})", "1"), Pair(R"(mirn_objects{kind="controller"})", "1"),
                  Pair(R"(mirn_objects{kind="disk"})", "4"), Pair(R"(mirn_objects{kind="port"})", "0"),
                  Pair(R"(mirn_objects{kind="volume"})", "1")));
}

TEST(MachineMetrics, TellSizesInBytes) {
  const auto samples = samplesOf(metricsOf(machineAfter([](MachineView& machine) {
    machine.arrays.front().totalBytes = 3000;
    machine.arrays.front().freeBytes = 1000;
    machine.volumes.front().totalBytes = 2000;
    machine.disks.front().freeBytes = 5;
  })));
  EXPECT_EQ(samples.at(R"(mirn_array_size_bytes{array="A"})"), "3000");
  EXPECT_EQ(samples.at(R"(mirn_array_free_bytes{array="A"})"), "1000");
  EXPECT_EQ(samples.at(R"(mirn_volume_size_bytes{volume="V"})"), "2000");
  EXPECT_EQ(samples.at(R"(mirn_disk_size_bytes{disk="D0"})"), "1099511627776");
  EXPECT_EQ(samples.at(R"(mirn_disk_free_bytes{disk="D0"})"), "5");
}

TEST(MachineMetrics, TellWhatIsFixedAsLabels) {
  const auto samples = samplesOf(metricsOf(machineAfter([](MachineView& machine) {
    machine.disks.front().model = L"a \"B\"";
    machine.volumes.front().name = L"Gr\u00F6\u00DFe";
  })));
  const char* const disk =
      R"(mirn_disk_info{disk="D0",serial_number="N-D0",model="a \"B\"",firmware="",type="SATA",controller="C"})";
  EXPECT_EQ(samples.count(disk), 1U);
  EXPECT_EQ(samples.count("mirn_volume_info{volume=\"V\",name=\"Größe\",level=\"RAID_5\",array=\"A\"}"), 1U);
  EXPECT_EQ(samples.count(R"(mirn_disk_array_info{disk="D0",array="A"})"), 1U);
  EXPECT_EQ(samples.count(R"(mirn_disk_array_info{disk="S",array=""})"), 0U) << "the spare is in no array";
}

TEST(MachineMetrics, ANameThatIsNoTextIsToldWithoutWhatIsForeign) {
  const MachineView machine = machineAfter([](MachineView& each) {
    each.volumes.front().name = {L'a', wchar_t(0xD800), L'b'};
  });
  EXPECT_EQ(samplesOf(metricsOf(machine))
                .count(R"(mirn_volume_info{volume="V",name="a?b",level="RAID_5",array="A"})"),
            1U);
}

TEST(MachineMetrics, TellHowManyDisksAVolumeMayLose) {
  EXPECT_EQ(samplesOf(metricsOf(smallMachine())).at(R"(mirn_volume_tolerated_failures{volume="V"})"), "1");
  const MachineView degraded = machineAfter([](MachineView& machine) {
    machine.volumes.front().state = L"DEGRADED";
    machine.disks.front().state = L"FAILED";
  });
  EXPECT_EQ(samplesOf(metricsOf(degraded)).at(R"(mirn_volume_tolerated_failures{volume="V"})"), "0");
}

TEST(MachineMetrics, TellWhatAVerificationHasCounted) {
  const auto samples = samplesOf(metricsOf(machineAfter([](MachineView& machine) {
    machine.volumes.front().verifyErrors = 3;
    machine.volumes.front().badBlocks = 2;
  })));
  EXPECT_EQ(samples.at(R"(mirn_volume_verify_errors{volume="V"})"), "3");
  EXPECT_EQ(samples.at(R"(mirn_volume_bad_blocks{volume="V"})"), "2");
  EXPECT_EQ(samples.at(R"(mirn_volume_initialized{volume="V"})"), "1");
}

TEST(MachineMetrics, TellOfWorkWhatIsDoneAndAllThereIs) {
  const auto samples = samplesOf(metricsOf(machineAfter([](MachineView& machine) {
    machine.work = {{L"V", L"REBUILDING"}, {L"V", L"REBUILDING"}, {L"gone", L"VERIFYING"}};
    machine.volumes.front().percent = 37;
  })));
  EXPECT_EQ(samples.at(R"(mirn_volume_work_steps_done{volume="V",work="rebuild"})"), "37");
  EXPECT_EQ(samples.at(R"(mirn_volume_work_steps{volume="V",work="rebuild"})"), "100");
  EXPECT_EQ(samples.count(R"(mirn_volume_work_steps{volume="gone",work="verify"})"), 0U);
}

TEST(MachineMetrics, WithoutWorkThereIsNoProgress) {
  EXPECT_THAT(samplesOf(metricsOf(smallMachine()), "mirn_volume_work_steps"), IsEmpty());
  EXPECT_THAT(samplesOf(metricsOf(smallMachine()), "mirn_volume_work_steps_done"), IsEmpty());
}

}  // namespace
}  // namespace insight
