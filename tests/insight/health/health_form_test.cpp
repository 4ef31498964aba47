#include "health/health_form.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "insight/machine/small_machine.h"

namespace insight {
namespace {

constexpr char kExpected[] = R"({
  "severity": "warning",
  "position": {"epoch": "0123456789abcdef", "revision": 7, "structure": 5, "sequence": 3},
  "takenAt": "2023-11-14T22:13:20.000Z",
  "causes": [{
    "id": "disk-smart-D0", "kind": "disk-smart", "severity": "warning",
    "object": {"type": "disk", "id": "D0", "name": "SATA N-D0"},
    "path": [{"type": "controller", "id": "C", "name": "Controller"},
             {"type": "array", "id": "A", "name": "Array_0000"},
             {"type": "disk", "id": "D0", "name": "SATA N-D0"}],
    "since": "2023-11-14T22:13:21.500Z",
    "text": "Disk SATA N-D0 reports that it may fail soon.",
    "atRisk": [{"type": "volume", "id": "V", "name": "Dät"}],
    "steps": [{"operation": "resetDiskSmart", "arguments": {"diskId": "D0"}}]
  }],
  "volumes": [{"id": "V", "name": "Dät", "mayFail": 0, "exact": false,
               "reason": "a disk of it is not as it should be"}]
})";

TEST(HealthForm, TellsEverythingOfAReport) {
  MachineView machine = smallMachine();
  machine.disks[0].state = L"SMART_EVENT_TRIGGERED";
  machine.volumes[0].name = L"D\u00e4t";
  const HealthReport report = healthOf(machine, kSmallMachineTakenAt);
  const auto since = [](const std::string& id) -> std::optional<std::uint64_t> {
    if (id != "disk-smart-D0") return {};
    return kSmallMachineTakenAt + 1500;
  };
  EXPECT_EQ(boost::json::value(formOf(report, since)), boost::json::parse(kExpected));
}

TEST(HealthForm, SaysWhatIsNotKnownAndWhatThereIsNot) {
  MachineView machine = smallMachine();
  machine.takenAt.reset();
  const boost::json::object form = formOf(healthOf(machine, 0));
  EXPECT_TRUE(form.at("takenAt").is_null());
  const boost::json::value& cause = form.at("causes").at(0);
  EXPECT_EQ(cause.at("since"), "unknown");
  EXPECT_TRUE(cause.at("object").at("id").is_null());
  EXPECT_TRUE(form.at("volumes").at(0).at("reason").is_null()) << "its tolerance is exact";
}

}  // namespace
}  // namespace insight
