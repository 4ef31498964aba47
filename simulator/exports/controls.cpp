#include <cstring>
#include <mutex>
#include <string>

#include "core/library.h"
#include "engine/incidents.h"
#include "model/invariants.h"
#include "operation_names.h"
#include "scenario/scenario.h"
#include "text_field.h"
#include "vexl2_simulator.h"

using simulator::EndDevice;
using simulator::Library;
using simulator::Machine;
using vexl2::FaultPoints;

namespace {

/// Why the last scenario was refused.
class LastError {
 public:
  static LastError& instance() {
    static LastError* const kInstance = new LastError;
    return *kInstance;
  }

  void set(std::string text) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_text = std::move(text);
  }

  std::string get() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_text;
  }

 private:
  std::mutex m_mutex;
  std::string m_text;
};

void putText(char* target, uint32_t size, const std::string& text) {
  if (target == nullptr || size == 0) return;
  const std::string_view kept = vexl2::cutText(text, size - 1);
  kept.copy(target, kept.size());
  target[kept.size()] = '\0';
}

template <class Read>
VEX_STATUS load(const char* source, Read read) {
  if (source == nullptr) return VEX_STATUS_INVALID_PARAMETER;
  try {
    Machine machine = read(source);
    LastError::instance().set(simulator::findViolation(machine));
    if (!LastError::instance().get().empty()) return VEX_STATUS_INVALID_PARAMETER;
    return Library::instance().loadMachine(std::move(machine));
  } catch (const simulator::ScenarioError& error) {
    LastError::instance().set(error.what());
    return VEX_STATUS_INVALID_PARAMETER;
  }
}

using Incident = void (*)(Machine&, EndDevice&);

VEX_STATUS strike(const char* disk, Incident incident) {
  if (disk == nullptr) return VEX_STATUS_INVALID_PARAMETER;
  return Library::instance().control(
      [&](Machine& machine) { incident(machine, simulator::findDevice(machine, disk)); });
}

VEX_STATUS order(const char* operation, const FaultPoints::Order& fault) {
  if (operation == nullptr || !vexl2::isOperationName(operation)) return VEX_STATUS_INVALID_PARAMETER;
  Library::instance().faults().add(operation, fault);
  return VEX_STATUS_SUCCESS;
}

}  // namespace

VEX_STATUS VexSimLastError(char* text, uint32_t size) {
  putText(text, size, LastError::instance().get());
  return VEX_STATUS_SUCCESS;
}

VEX_STATUS VexSimLoadText(const char* json) { return load(json, simulator::readScenario); }

VEX_STATUS VexSimLoadFile(const char* path) { return load(path, simulator::loadScenario); }

VEX_STATUS VexSimSaveText(char* text, uint32_t* size) {
  if (size == nullptr) return VEX_STATUS_INVALID_PARAMETER;
  return Library::instance().inspect([&](const Machine& machine) {
    const std::string json = simulator::writeScenario(machine);
    const uint32_t room = text == nullptr ? 0 : *size;
    *size = static_cast<uint32_t>(json.size() + 1);
    vexl2::require(*size <= room, VEX_STATUS_NOT_ENOUGH_ITEMS);
    std::memcpy(text, json.c_str(), *size);
  });
}

VEX_STATUS VexSimFailDisk(const char* disk) { return strike(disk, simulator::failDisk); }

VEX_STATUS VexSimPullDisk(const char* disk) { return strike(disk, simulator::pullDevice); }

VEX_STATUS VexSimInsertDisk(const char* disk) { return strike(disk, simulator::insertDevice); }

VEX_STATUS VexSimInsertBlankDisk(const char* bay, uint64_t totalSize, uint32_t sectorSize, const char* model,
                                 char* id, uint32_t size) {
  if (bay == nullptr) return VEX_STATUS_INVALID_PARAMETER;
  simulator::BlankDisk wanted;
  wanted.totalSize = totalSize;
  wanted.logicalSectorSize = sectorSize;
  if (model != nullptr) wanted.model = model;
  return Library::instance().control([&](Machine& machine) {
    const EndDevice& former = simulator::findDevice(machine, bay);
    putText(id, size, simulator::insertBlankDisk(machine, former, wanted).id);
  });
}

VEX_STATUS VexSimLockDisk(const char* disk) { return strike(disk, simulator::lockDisk); }

VEX_STATUS VexSimRaiseSmartEvent(const char* disk) { return strike(disk, simulator::raiseSmartEvent); }

VEX_STATUS VexSimAdvanceClock(uint64_t milliseconds) {
  return Library::instance().advanceClock(milliseconds);
}

VEX_STATUS VexSimSetClockSpeed(uint32_t speed) { return Library::instance().setClockSpeed(speed); }

VEX_STATUS VexSimCapEventWait(uint32_t milliseconds) { return Library::instance().capWait(milliseconds); }

VEX_STATUS VexSimFailCalls(const char* operation, uint32_t skip, uint32_t count, VEX_STATUS status) {
  return order(operation, {skip, count, status, 0});
}

VEX_STATUS VexSimDelayCalls(const char* operation, uint32_t skip, uint32_t count, uint32_t milliseconds) {
  return order(operation, {skip, count, {}, milliseconds});
}

VEX_STATUS VexSimClearFaults() {
  Library::instance().faults().clear();
  return VEX_STATUS_SUCCESS;
}

VEX_STATUS VexSimCountCalls(const char* operation, uint64_t* calls) {
  if (operation == nullptr || calls == nullptr || !vexl2::isOperationName(operation)) {
    return VEX_STATUS_INVALID_PARAMETER;
  }
  *calls = Library::instance().faults().callsOf(operation);
  return VEX_STATUS_SUCCESS;
}

VEX_STATUS VexSimCheck(char* text, uint32_t size) {
  const std::string whyBehind = Library::instance().whyBehind();
  return Library::instance().inspect([&](const Machine& machine) {
    std::string violation = simulator::findViolation(machine);
    if (violation.empty() && !whyBehind.empty()) violation = "what happened is not kept: " + whyBehind;
    putText(text, size, violation.empty() ? simulator::findUnprotected(machine) : violation);
    vexl2::require(violation.empty(), VEX_STATUS_INTERNAL_ERROR);
  });
}
