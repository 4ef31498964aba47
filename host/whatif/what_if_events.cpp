#include "whatif/what_if_events.h"

#include <boost/json/object.hpp>

#include "answers/answer.h"
#include "answers/json_reader.h"
#include "text.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

/// The list, its events and their values, with room for what is refused by its words.
constexpr JsonBounds kBounds{4, 4 * kMostWhatIfEvents};

constexpr wchar_t kEvents[] = L"events";
constexpr wchar_t kFail[] = L"fail";
constexpr wchar_t kPull[] = L"pull";
constexpr wchar_t kWait[] = L"wait";

[[noreturn]] void refuse(const std::string& words) { throw Refusal(400, words); }

// Alternatives of a value.
constexpr int kUnsigned = 3;
constexpr int kText = 5;

/// Of a list or an object.
std::size_t sizeOf(const ServiceObject& value) {
  std::size_t size = 0;
  for (auto child = value.begin(); child != value.end(); ++child) ++size;
  return size;
}

std::uint64_t secondsIn(const ServiceObject& value) {
  if (value.which() != kUnsigned) refuse("\"wait\" takes whole seconds");
  const auto seconds = static_cast<std::uint64_t>(value.toInt64());
  if (seconds > kLongestWaitSeconds) refuse("\"wait\" is too long: ten years at most");
  return seconds;
}

std::string diskIn(const ServiceObject& value, const std::string& name, const DiskLookUp& isDisk) {
  if (value.which() != kText) refuse("\"" + name + "\" takes the id of a disk");
  const std::wstring id = value.toString();
  if (!isDisk(id)) throw Refusal(404, "There is no disk " + wideToUtf8(id));
  return wideToUtf8(id);
}

boost::json::object eventOf(const ServiceObject& event, const DiskLookUp& isDisk) {
  if (!event.isObject() || sizeOf(event) != 1) refuse("An event is an object with one member");
  if (event.hasKey(kWait)) return {{"wait", secondsIn(event.member(kWait))}};
  for (const wchar_t* const key : {kFail, kPull}) {
    const std::string name = wideToUtf8(key);
    if (event.hasKey(key)) return {{name, diskIn(event.member(key), name, isDisk)}};
  }
  refuse("An event is \"fail\", \"pull\" or \"wait\"");
}

}  // namespace

boost::json::array whatIfEventsIn(const std::string& body, const DiskLookUp& isDisk) {
  const ServiceObject value = readJson(body, kBounds);
  if (!value.isObject() || sizeOf(value) != 1 || !value.hasKey(kEvents) || !value.member(kEvents).isArray()) {
    refuse("The body is an object with the list \"events\"");
  }
  const ServiceObject& events = value.member(kEvents);
  if (sizeOf(events) == 0) refuse("Nothing is to happen: \"events\" is empty");
  if (sizeOf(events) > kMostWhatIfEvents) refuse("Too much is to happen: 64 events at most");
  boost::json::array list;
  for (const auto element : events) list.emplace_back(eventOf(*element.value, isDisk));
  return list;
}

}  // namespace host
