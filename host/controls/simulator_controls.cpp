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
  const char* summary;
  std::vector<std::wstring> needed;
  const char* answer = "";      ///< A schema.
  bool mayTellNothing = false;  ///< There may be nothing to tell.
};

namespace {

const std::vector<SimulatorControl> kControls{
    {L"fail-disk", "VexSimFailDisk", {L"disk"}, onDisk, "Lets a disk fail.", {L"disk"}},
    {L"pull-disk", "VexSimPullDisk", {L"disk"}, onDisk, "Pulls a disk out of its bay.", {L"disk"}},
    {L"insert-disk", "VexSimInsertDisk", {L"disk"}, onDisk, "Puts a pulled disk back.", {L"disk"}},
    {L"insert-blank-disk",
     "VexSimInsertBlankDisk",
     {L"disk", L"size", L"sectorSize", L"model"},
     insertBlankDisk,
     "Puts a new disk into the bay of a pulled one.",
     {L"disk"},
     R"({"type": "object", "properties": {"disk": {"type": "string"}}, "required": ["disk"]})"},
    {L"lock-disk", "VexSimLockDisk", {L"disk"}, onDisk, "Locks a disk.", {L"disk"}},
    {L"raise-smart-event",
     "VexSimRaiseSmartEvent",
     {L"disk"},
     onDisk,
     "Lets a disk warn of itself.",
     {L"disk"}},
    {L"advance-clock",
     "VexSimAdvanceClock",
     {L"milliseconds"},
     advanceClock,
     "Moves the machine's time ahead.",
     {L"milliseconds"}},
    {L"set-clock-speed",
     "VexSimSetClockSpeed",
     {L"speed"},
     setClockSpeed,
     "Says how fast the machine's time goes; 0 stops it.",
     {L"speed"}},
    {L"cap-event-wait",
     "VexSimCapEventWait",
     {L"milliseconds"},
     capEventWait,
     "Bounds how long the library waits for an event.",
     {L"milliseconds"}},
    {L"fail-calls",
     "VexSimFailCalls",
     {L"operation", L"skip", L"count", L"status"},
     failCalls,
     "Lets calls of an operation of the library fail.",
     {L"operation", L"status"}},
    {L"delay-calls",
     "VexSimDelayCalls",
     {L"operation", L"skip", L"count", L"milliseconds"},
     delayCalls,
     "Lets calls of an operation of the library take longer.",
     {L"operation", L"milliseconds"}},
    {L"clear-faults", "VexSimClearFaults", {}, clearFaults, "Takes back all ordered faults.", {}},
    {L"count-calls",
     "VexSimCountCalls",
     {L"operation"},
     countCalls,
     "Counts the calls of an operation of the library.",
     {L"operation"},
     R"({"type": "object", "properties": {"calls": {"type": "integer", "minimum": 0}}, "required": ["calls"]})"},
    {L"load-scenario",
     "VexSimLoadText",
     {L"scenario"},
     loadScenario,
     "Exchanges the machine for another.",
     {L"scenario"}},
    {L"check",
     "VexSimCheck",
     {},
     check,
     "Holds the machine to the rules that always hold.",
     {},
     R"({"type": "object", "properties": {"notice": {"type": "string"}}, "required": ["notice"]})",
     true},
};

/// By the argument's name, which means the same to all controls.
const char* schemaOfArgument(const std::wstring& name) {
  static const std::map<std::wstring, const char*> kSchemas{
      {L"disk", R"({"type": "string", "description": "A disk, by its identity text, serial number or id."})"},
      {L"model", R"({"type": "string", "description": "Without it that of the pulled disk."})"},
      {L"operation", R"({"type": "string", "description": "A function of the library, such as VexRescan."})"},
      {L"scenario", R"({"type": "object", "description": "A machine, as a scenario tells it."})"},
      {L"size",
       R"({"type": "integer", "minimum": 0, "description": "Bytes; 0 for those of the pulled disk."})"},
      {L"skip", R"({"type": "integer", "minimum": 0, "description": "Calls that pass before."})"},
      {L"count",
       R"({"type": "integer", "minimum": 0, "description": "Calls that are meant; 1 without it."})"},
      {L"status", R"({"type": "integer", "minimum": 0, "description": "The status that they give."})"}};
  const auto found = kSchemas.find(name);
  return found == kSchemas.end() ? R"({"type": "integer", "minimum": 0})" : found->second;
}

std::string bodyOf(const SimulatorControl& control) {
  if (control.arguments.empty()) return {};
  std::string properties;
  std::string needed;
  for (const std::wstring& name : control.arguments) {
    properties += (properties.empty() ? "\"" : ", \"") + wideToUtf8(name) + "\": " + schemaOfArgument(name);
  }
  for (const std::wstring& name : control.needed)
    needed += (needed.empty() ? "\"" : ", \"") + wideToUtf8(name) + '"';
  return R"({"type": "object", "properties": {)" + properties + R"(}, "required": [)" + needed +
         R"(], "additionalProperties": false})";
}

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

ControlDescription SimulatorControls::describe(const std::wstring& name) const {
  const SimulatorControl& control = *m_functions.at(name).control;
  return {control.summary, bodyOf(control), !control.needed.empty(), control.answer, control.mayTellNothing};
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
