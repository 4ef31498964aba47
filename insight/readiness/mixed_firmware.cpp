#include <boost/json/array.hpp>
#include <map>
#include <unordered_map>

#include "readiness/readiness_checks.h"
#include "text.h"
#include "view/object_path.h"

namespace insight {

namespace {

/// So many disks are to be found by their lights, at most.
constexpr std::size_t kMostLights = 10;

using Disks = std::vector<const DiskView*>;
using DisksByFirmware = std::map<std::wstring, Disks>;

/// Disks that tell both, by model and firmware.
std::map<std::wstring, DisksByFirmware> disksByModel(const MachineView& machine) {
  std::map<std::wstring, DisksByFirmware> models;
  for (const DiskView& disk : machine.disks) {
    if (!disk.model.empty() && !disk.firmware.empty()) models[disk.model][disk.firmware].push_back(&disk);
  }
  return models;
}

/// That which most disks have; of two, the later in order.
const std::wstring& commonest(const DisksByFirmware& versions) {
  auto most = versions.begin();
  for (auto each = versions.begin(); each != versions.end(); ++each) {
    if (each->second.size() >= most->second.size()) most = each;
  }
  return most->first;
}

boost::json::array countsOf(const DisksByFirmware& versions) {
  boost::json::array counts;
  for (const auto& [version, disks] : versions) {
    counts.push_back(boost::json::object{{"version", wideToUtf8(version)}, {"disks", disks.size()}});
  }
  return counts;
}

/// Nothing here loads firmware into a disk: a light shows whoever does where it is.
std::vector<NextStep> lightsOf(const MachineView& machine, const Disks& disks) {
  std::unordered_map<std::wstring, std::wstring> ports;
  for (const PortView& port : machine.ports) ports.emplace(port.deviceId, port.id);
  std::vector<NextStep> steps;
  for (const DiskView* const disk : disks) {
    const auto port = ports.find(disk->id);
    if (port == ports.end()) continue;
    steps.push_back({"locatePort", {{"portId", port->second}, {"state", L"ENABLED"}}});
    if (steps.size() == kMostLights) break;
  }
  return steps;
}

ReadinessLine lineOf(const MachineView& machine, const std::wstring& model, const DisksByFirmware& versions) {
  const std::wstring& usual = commonest(versions);
  Disks others;
  for (const auto& [version, disks] : versions) {
    if (version != usual) others.insert(others.end(), disks.begin(), disks.end());
  }
  ReadinessLine line;
  line.severity = Severity::kInfo;
  for (const DiskView* const disk : others) line.objects.push_back(refOf(*disk));
  line.text = "Disks of the model " + wideToUtf8(model) + " have " + std::to_string(versions.size()) +
              " versions of firmware; most have " + wideToUtf8(usual) + '.';
  line.details = {{"model", wideToUtf8(model)}, {"firmware", countsOf(versions)}};
  line.steps = lightsOf(machine, others);
  return line;
}

}  // namespace

CheckFindings lookForFirmware(const ReadinessLook& look) {
  CheckFindings findings;
  for (const auto& [model, versions] : disksByModel(look.machine())) {
    if (versions.size() > 1) findings.lines.push_back(lineOf(look.machine(), model, versions));
  }
  return findings;
}

}  // namespace insight
