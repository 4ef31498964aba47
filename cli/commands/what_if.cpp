#include "commands/what_if.h"

#include <algorithm>
#include <boost/json/serialize.hpp>

#include "commands/call.h"
#include "exit_status.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

[[noreturn]] void refuse(const std::string& text) {
  throw Failure(ExitStatus::kUsage, text,
                "say what happens, one behind the other: fail DISK, pull DISK, wait TIME");
}

json::array eventsOf(const Context& context, const std::vector<std::string>& words) {
  if (words.empty()) refuse("nothing is said to happen");
  json::array events;
  for (std::size_t place = 0; place < words.size(); place += 2) {
    const std::string& event = words[place];
    const bool isTime = event == "wait";
    if (!isTime && event != "fail" && event != "pull") refuse("nothing is called '" + event + "' here");
    if (place + 1 == words.size()) refuse("something is missing behind '" + event + "'");
    const std::string& word = words[place + 1];
    events.push_back(json::object{
        {event, isTime ? json::value(secondsOf(word)) : json::value(context.names.idOf("disk", word))}});
  }
  return events;
}

}  // namespace

std::int64_t secondsOf(const std::string& text) {
  constexpr std::size_t kMostDigits = 9;
  const std::size_t digits = std::min(text.find_first_not_of("0123456789"), text.size());
  const std::string unit = text.substr(digits);
  std::int64_t factor = 0;
  if (unit.empty() || unit == "s") factor = 1;
  if (unit == "m" || unit == "min") factor = 60;
  if (unit == "h") factor = 60 * 60;
  if (unit == "d") factor = 24 * 60 * 60;
  if (digits == 0 || digits > kMostDigits || factor == 0) {
    throw Failure(ExitStatus::kUsage, "'" + text + "' is no time",
                  "say a number with s, m, h or d behind it");
  }
  return std::stoll(text.substr(0, digits)) * factor;
}

void whatIf(const Context& context, const std::vector<std::string>& words) {
  const Operation* const operation = context.document.find("whatIf");
  if (operation == nullptr)
    throw Failure(ExitStatus::kNotFound, "this service cannot be asked what would be");
  call(context, *operation, {{"events", json::serialize(eventsOf(context, words))}});
}

}  // namespace mirnctl
