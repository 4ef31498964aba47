#include "service/plugin_events.h"

#include <algorithm>
#include <cctype>

#include "text.h"

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

std::string lowerCase(std::string word) {
  std::transform(word.begin(), word.end(), word.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return word;
}

std::wstring textOf(const ServiceObject& event, const wchar_t* key) {
  return event.hasKey(key) ? event.member(key).toString() : std::wstring();
}

Severity severityOfWord(const std::wstring& word) {
  if (word == L"ERROR") return Severity::kCritical;
  return word == L"WARNING" ? Severity::kWarning : Severity::kInfo;
}

Entry entryOf(const ServiceObject& event, const std::string& epoch) {
  Entry entry;
  entry.epoch = epoch;
  entry.sequence = static_cast<std::uint64_t>(event.member(L"number").toInt64());
  entry.atMs = event.member(L"moment").toInt64();
  entry.kind = "event";
  entry.severity = severityOfWord(textOf(event, L"severity"));
  entry.object = {lowerCase(wideToUtf8(textOf(event, L"objectType"))), textOf(event, L"objectId"),
                  textOf(event, L"objectName")};
  entry.operation = wideToUtf8(textOf(event, L"kind"));
  entry.body["description"] = wideToUtf8(textOf(event, L"description"));
  for (const wchar_t* const key : {L"oldState", L"newState"}) {
    if (event.hasKey(key)) entry.body[wideToUtf8(key)] = wideToUtf8(textOf(event, key));
  }
  return entry;
}

}  // namespace

PluginEvents pluginEventsOf(const ServiceObject& events, const std::string& epoch) {
  PluginEvents part;
  part.oldest = static_cast<std::uint64_t>(events.member(L"oldest").toInt64());
  for (const auto each : events.member(L"events")) part.entries.push_back(entryOf(*each.value, epoch));
  return part;
}

}  // namespace insight
