#include "scripted_library/argument_description.h"

namespace {

ScriptedArgument plain(const std::string& text) {
  ScriptedArgument argument;
  argument.text = text;
  return argument;
}

std::string hexOf(const std::string& bytes) {
  const char digits[] = "0123456789abcdef";
  std::string hex;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    hex += {digits[value >> 4], digits[value & 0xF]};
  }
  return hex;
}

std::string bytesOf(const void* record, std::size_t size) {
  return std::string(static_cast<const char*>(record), size);
}

template <class Record>
ScriptedArgument recordArgument(const Record& record) {
  ScriptedArgument argument;
  argument.bytes = bytesOf(&record, sizeof record);
  argument.text = "{" + hexOf(argument.bytes) + "}";
  return argument;
}

/// An address says nothing to a test, so what it points to is recorded in its place.
template <class Record>
ScriptedArgument recordWithDisks(Record record) {
  const ScriptedArgument disks = describe(HandleList{record.disks, record.diskCount});
  record.disks = nullptr;
  ScriptedArgument argument = recordArgument(record);
  argument.text.insert(argument.text.size() - 1, "; " + disks.text);
  argument.handles = disks.handles;
  return argument;
}

}  // namespace

ScriptedArgument describe(std::uint64_t number) {
  ScriptedArgument argument = plain(std::to_string(number));
  argument.number = number;
  return argument;
}

ScriptedArgument describe(const char* text) {
  if (text == nullptr) return plain("null");
  ScriptedArgument argument = plain('"' + std::string(text) + '"');
  argument.bytes = text;
  return argument;
}

ScriptedArgument describe(Out out) {
  if (out.memory == nullptr) return plain("null");
  ScriptedArgument argument = plain("out");
  argument.bytes = bytesOf(out.memory, out.size);
  return argument;
}

ScriptedArgument describe(Count count) {
  return count.value == nullptr ? plain("null") : describe(*count.value);
}

ScriptedArgument describe(HandleList list) {
  if (list.handles == nullptr) return plain("null");
  ScriptedArgument argument;
  argument.handles.assign(list.handles, list.handles + list.count);
  const char* separator = "";
  for (const VEX_HANDLE handle : argument.handles) {
    argument.text += separator + std::to_string(handle);
    separator = ", ";
  }
  argument.text = "[" + argument.text + "]";
  return argument;
}

ScriptedArgument describe(const VEX_CREATE_VOLUME_PARAMS& params) { return recordArgument(params); }

ScriptedArgument describe(VEX_CREATE_FROM_DISKS_PARAMS params) { return recordWithDisks(params); }

ScriptedArgument describe(VEX_RAID_LEVEL_MODIFY_PARAMS params) { return recordWithDisks(params); }

ScriptedArgument describe(const VEX_UNLOCK_PARAMS* params) {
  return params == nullptr ? plain("null") : recordArgument(*params);
}
