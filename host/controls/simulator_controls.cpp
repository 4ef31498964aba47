#include "controls/simulator_controls.h"

#include <cstdint>
#include <vector>

#include "answers/answer.h"
#include "controls/control_arguments.h"
#include "text.h"
#include "vexl2_simulator.h"

namespace host {

namespace {

using Value = SimulatorControls::Value;

/// What a control leaves beside its status.
struct Outcome {
  Value answer;
  std::string reason;  ///< Of a failure; empty when the status has to do.
};

constexpr std::size_t kReasonSize = 1024;

/// The function behind a symbol, by the type of its declaration.
template <class Function>
Function* as(void* symbol) {
  return reinterpret_cast<Function*>(symbol);
}

template <class Function>
std::string reasonOf(void* function, VEX_STATUS& status) {
  std::string text(kReasonSize, '\0');
  status = as<Function>(function)(text.data(), static_cast<std::uint32_t>(text.size()));
  return text.c_str();
}

VEX_STATUS onDisk(void* function, const ControlArguments& arguments, Outcome&) {
  return as<decltype(VexSimFailDisk)>(function)(arguments.text(L"disk").c_str());
}

VEX_STATUS insertBlankDisk(void* function, const ControlArguments& arguments, Outcome& outcome) {
  std::string id(kReasonSize, '\0');
  const std::string bay = arguments.text(L"disk");
  const std::string model = arguments.text(L"model", "");
  const VEX_STATUS status = as<decltype(VexSimInsertBlankDisk)>(function)(
      bay.c_str(), arguments.longNumber(L"size", 0), arguments.number(L"sectorSize", 0), model.c_str(),
      id.data(), static_cast<std::uint32_t>(id.size()));
  outcome.answer.member(L"disk") = utf8ToWide(id.c_str());
  return status;
}

VEX_STATUS advanceClock(void* function, const ControlArguments& arguments, Outcome&) {
  return as<decltype(VexSimAdvanceClock)>(function)(arguments.longNumber(L"milliseconds"));
}

VEX_STATUS setClockSpeed(void* function, const ControlArguments& arguments, Outcome&) {
  return as<decltype(VexSimSetClockSpeed)>(function)(arguments.number(L"speed"));
}

VEX_STATUS capEventWait(void* function, const ControlArguments& arguments, Outcome&) {
  return as<decltype(VexSimCapEventWait)>(function)(arguments.number(L"milliseconds"));
}

/// Both orders take an operation, the calls that they are for, and one number.
template <class Function>
VEX_STATUS order(void* function, const ControlArguments& arguments, const wchar_t* what) {
  const std::string operation = arguments.text(L"operation");
  return as<Function>(function)(operation.c_str(), arguments.number(L"skip", 0),
                                arguments.number(L"count", 1), arguments.number(what));
}

VEX_STATUS failCalls(void* function, const ControlArguments& arguments, Outcome&) {
  return order<decltype(VexSimFailCalls)>(function, arguments, L"status");
}

VEX_STATUS delayCalls(void* function, const ControlArguments& arguments, Outcome&) {
  return order<decltype(VexSimDelayCalls)>(function, arguments, L"milliseconds");
}

VEX_STATUS clearFaults(void* function, const ControlArguments&, Outcome&) {
  return as<decltype(VexSimClearFaults)>(function)();
}

VEX_STATUS countCalls(void* function, const ControlArguments& arguments, Outcome& outcome) {
  std::uint64_t calls = 0;
  const VEX_STATUS status =
      as<decltype(VexSimCountCalls)>(function)(arguments.text(L"operation").c_str(), &calls);
  outcome.answer.member(L"calls") = calls;
  return status;
}

VEX_STATUS loadScenario(void* function, const ControlArguments& arguments, Outcome&) {
  return as<decltype(VexSimLoadText)>(function)(arguments.document(L"scenario").c_str());
}

VEX_STATUS check(void* function, const ControlArguments&, Outcome& outcome) {
  VEX_STATUS status = VEX_STATUS_SUCCESS;
  outcome.reason = reasonOf<decltype(VexSimCheck)>(function, status);
  const bool isNotice = status == VEX_STATUS_SUCCESS && !outcome.reason.empty();
  if (isNotice) outcome.answer.member(L"notice") = utf8ToWide(outcome.reason);
  return status;
}

/// What a client is told of a status: the library's words, and what to do.
struct Refused {
  std::int32_t httpStatus;
  const char* words;
};

Refused refusedBy(VEX_STATUS status) {
  static const std::map<VEX_STATUS, Refused> kStatuses{
      {VEX_STATUS_INVALID_PARAMETER,
       {400,
        "Invalid parameter was passed: an operation is named as in VexRescan, and a device as it is listed"}},
      {VEX_STATUS_INVALID_DISK, {400, "Invalid Disk: the device is none; name a disk"}},
      {VEX_STATUS_DISK_TOO_SMALL, {400, "The disk is too small for any use: it needs more than 8 MiB"}},
      {VEX_STATUS_INVALID_SECTOR_SIZE, {400, "The sector size is no power of two from 512 on"}},
      {VEX_STATUS_INVALID_HANDLE,
       {404, "There is no such disk: name it by its identity text, its serial number or its published id"}},
      {VEX_STATUS_INVALID_STATE,
       {409,
        "Item not in appropriate state for action to complete successfully: look at the disk's state, which "
        "is as "
        "ordered already or does not allow it"}},
      {VEX_STATUS_NOT_INITIALIZED,
       {503, "The library is not initialized yet: ask again when the host has started"}},
      {VEX_STATUS_FAILED,
       {500,
        "Function failed to complete: the change cannot be kept, and the host's standard error says why; "
        "mend that "
        "and ask again"}},
  };
  const auto found = kStatuses.find(status);
  return found == kStatuses.end() ? Refused{500, ""} : found->second;
}

constexpr wchar_t kDisk[] = L"disk";

}  // namespace

struct SimulatorControl {
  const wchar_t* name;
  const char* symbol;
  std::vector<std::wstring> arguments;
  VEX_STATUS (*call)(void* function, const ControlArguments& arguments, Outcome& outcome);
};

namespace {

const std::vector<SimulatorControl> kControls{
    {L"fail-disk", "VexSimFailDisk", {L"disk"}, onDisk},
    {L"pull-disk", "VexSimPullDisk", {L"disk"}, onDisk},
    {L"insert-disk", "VexSimInsertDisk", {L"disk"}, onDisk},
    {L"insert-blank-disk",
     "VexSimInsertBlankDisk",
     {L"disk", L"size", L"sectorSize", L"model"},
     insertBlankDisk},
    {L"lock-disk", "VexSimLockDisk", {L"disk"}, onDisk},
    {L"raise-smart-event", "VexSimRaiseSmartEvent", {L"disk"}, onDisk},
    {L"advance-clock", "VexSimAdvanceClock", {L"milliseconds"}, advanceClock},
    {L"set-clock-speed", "VexSimSetClockSpeed", {L"speed"}, setClockSpeed},
    {L"cap-event-wait", "VexSimCapEventWait", {L"milliseconds"}, capEventWait},
    {L"fail-calls", "VexSimFailCalls", {L"operation", L"skip", L"count", L"status"}, failCalls},
    {L"delay-calls", "VexSimDelayCalls", {L"operation", L"skip", L"count", L"milliseconds"}, delayCalls},
    {L"clear-faults", "VexSimClearFaults", {}, clearFaults},
    {L"count-calls", "VexSimCountCalls", {L"operation"}, countCalls},
    {L"load-scenario", "VexSimLoadText", {L"scenario"}, loadScenario},
    {L"check", "VexSimCheck", {}, check},
};

}  // namespace

SimulatorControls::SimulatorControls(const Finder& find) : m_lastError(find("VexSimLastError")) {
  for (const SimulatorControl& control : kControls) {
    if (void* const function = find(control.symbol)) m_functions[control.name] = {&control, function};
  }
}

std::vector<std::wstring> SimulatorControls::names() const {
  std::vector<std::wstring> names;
  for (const auto& entry : m_functions) names.push_back(entry.first);
  return names;
}

SimulatorControls::Value SimulatorControls::describe() const {
  Value list = Value::array();
  std::size_t count = 0;
  for (const auto& [name, found] : m_functions) {
    Value& element = list.at(count++);
    element.member(L"name") = name;
    Value& arguments = element.member(L"arguments");
    arguments = Value::array();
    std::size_t index = 0;
    for (const std::wstring& argument : found.control->arguments) arguments.at(index++) = argument;
  }
  return list;
}

SimulatorControls::Value SimulatorControls::run(const std::wstring& name, const Value& arguments,
                                                DiskNames* disks) const {
  const Found& found = m_functions.at(name);
  Outcome outcome;
  const auto call = [&](const Value& given) {
    return found.control->call(found.function, ControlArguments(given, found.control->arguments), outcome);
  };
  const bool namesDisk = found.control->call == onDisk || found.control->call == insertBlankDisk;
  if (disks != nullptr && namesDisk) disks->remember();
  VEX_STATUS status = call(arguments);
  if (disks != nullptr && namesDisk && status == VEX_STATUS_INVALID_HANDLE) {
    Value translated = arguments;
    translated.member(kDisk) = disks->serialNumberOf(arguments.member(kDisk).toString());
    if (!translated.member(kDisk).toString().empty()) status = call(translated);
  }
  if (status == VEX_STATUS_SUCCESS) return outcome.answer;
  if (found.control->call == loadScenario && m_lastError) {
    VEX_STATUS ignored = VEX_STATUS_SUCCESS;
    outcome.reason = reasonOf<decltype(VexSimLastError)>(m_lastError, ignored);
  }
  const Refused refused = refusedBy(status);
  if (outcome.reason.empty()) outcome.reason = refused.words;
  if (outcome.reason.empty())
    outcome.reason = "The simulated library answers status " + std::to_string(status);
  throw Refusal(refused.httpStatus, outcome.reason);
}

}  // namespace host
