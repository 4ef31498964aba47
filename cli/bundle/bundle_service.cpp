#include "bundle/bundle_service.h"

#include <algorithm>
#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include "answers/record.h"
#include "exit_status.h"
#include "tick_clock.h"
#include "utc_time.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

using Parameters = std::map<std::string, std::string>;
using Pages = std::vector<const Recorded*>;

constexpr unsigned kOk = 200;
constexpr std::size_t kUsualLimit = 100;

[[noreturn]] void refuse(const std::string& text, const std::string& advice = {}) {
  throw Failure(ExitStatus::kUsage, text, advice);
}

json::value parsed(const Recorded& recorded) {
  boost::system::error_code error;
  json::value value = json::parse({recorded.body.data(), recorded.body.size()}, error);
  if (error) refuse("the bundle has an answer to " + recorded.path + " that is no JSON");
  return value;
}

bool isPaging(const std::string& name) { return name == "limit" || name == "cursor"; }

/// Of what was asked for, only what the request asks for, too.
bool fits(const Recorded& recorded, const Parameters& asked) {
  return std::all_of(recorded.parameters.begin(), recorded.parameters.end(), [&asked](const auto& parameter) {
    const auto found = asked.find(parameter.first);
    return isPaging(parameter.first) || (found != asked.end() && found->second == parameter.second);
  });
}

std::size_t choices(const Recorded& recorded) {
  return static_cast<std::size_t>(
      std::count_if(recorded.parameters.begin(), recorded.parameters.end(),
                    [](const auto& parameter) { return !isPaging(parameter.first); }));
}

/// The recorded answers of a path that come nearest to what is asked for, in the order of their pages.
Pages pagesOf(const std::vector<Recorded>& answers, const std::string& path, const Parameters& asked) {
  Pages pages;
  for (const Recorded& each : answers) {
    if (each.path != path || !fits(each, asked)) continue;
    if (!pages.empty() && choices(each) > choices(*pages.front())) pages.clear();
    if (pages.empty() || choices(each) == choices(*pages.front())) pages.push_back(&each);
  }
  return pages;
}

/// What a list is to be picked out of by, besides what it was recorded for.
Parameters conditionsOf(const Recorded& recorded, const Parameters& asked) {
  Parameters conditions;
  for (const auto& [name, value] : asked) {
    if (!isPaging(name) && recorded.parameters.count(name) == 0) conditions.emplace(name, value);
  }
  return conditions;
}

bool meets(const json::value& record, const Parameters& conditions) {
  return std::all_of(conditions.begin(), conditions.end(), [&record](const auto& condition) {
    if (memberOf(record, condition.first) == nullptr) {
      refuse("the bundle cannot tell what is picked out by '" + condition.first + "'");
    }
    return textAt(record, condition.first) == condition.second;
  });
}

std::size_t numberIn(const Parameters& asked, const char* name, std::size_t usual) {
  constexpr std::size_t kMostDigits = 9;
  const auto found = asked.find(name);
  if (found == asked.end()) return usual;
  const std::string& text = found->second;
  const bool isNumber = !text.empty() && text.size() <= kMostDigits &&
                        text.find_first_not_of("0123456789") == std::string::npos;
  if (!isNumber) refuse(std::string("'") + name + "' cannot be '" + text + "' here");
  return std::stoul(text);
}

/// One page of all that was recorded.
json::value pageOf(const Pages& pages, const Parameters& asked) {
  json::object answer;
  json::array records;
  for (const Recorded* const page : pages) {
    const json::value body = parsed(*page);
    if (answer.empty() && body.is_object()) answer = body.get_object();
    for (json::value& record : recordsOf(body)) records.push_back(std::move(record));
  }
  const Parameters conditions = conditionsOf(*pages.front(), asked);
  json::array found;
  for (json::value& record : records) {
    if (meets(record, conditions)) found.push_back(std::move(record));
  }
  const std::size_t begin = std::min(numberIn(asked, "cursor", 0), found.size());
  const std::size_t count = std::min(numberIn(asked, "limit", kUsualLimit), found.size() - begin);
  answer["items"] = json::array(found.begin() + static_cast<std::ptrdiff_t>(begin),
                                found.begin() + static_cast<std::ptrdiff_t>(begin + count));
  const bool isLast = begin + count == found.size();
  answer["next"] = isLast ? json::value() : json::value(std::to_string(begin + count));
  return answer;
}

bool isPage(const json::value& body) {
  const json::value* const items = body.is_object() ? body.get_object().if_contains("items") : nullptr;
  return items != nullptr && items->is_array() && body.get_object().contains("next");
}

/// The record with this id in the recorded lists of a path, whichever was asked for.
const json::value* recordIn(const std::vector<Recorded>& answers, const std::string& path,
                            const std::string& id, json::value& body) {
  for (const Recorded& each : answers) {
    if (each.path != path || each.status != kOk) continue;
    body = parsed(each);
    if (!isPage(body)) continue;
    for (const json::value& record : body.get_object().at("items").get_array()) {
      if (textAt(record, "id") == id) return &record;
    }
  }
  return nullptr;
}

}  // namespace

Reply BundleService::ask(const Request& request) {
  if (request.method != "GET") refuse("a bundle tells what was, and nothing can be done with it");
  const auto [path, asked] = partsOfTarget(request.target);
  const Pages pages = pagesOf(m_file.answers(), path, asked);
  if (pages.empty()) {
    const std::size_t slash = path.rfind('/');
    json::value body;
    const json::value* const record =
        recordIn(m_file.answers(), path.substr(0, slash), path.substr(slash + 1), body);
    if (record == nullptr) refuse("the bundle has no answer to " + path);
    return {kOk, {}, json::serialize(*record)};
  }
  const Recorded& first = *pages.front();
  const bool isList = first.status == kOk && isPage(parsed(first));
  if (isList) return {kOk, {}, json::serialize(pageOf(pages, asked))};
  const Parameters conditions = conditionsOf(first, asked);
  if (!conditions.empty())
    refuse("the bundle cannot tell what '" + conditions.begin()->first + "' makes of it");
  return {first.status, {}, std::string(first.body)};
}

Reply BundleService::follow(const Request& request, const std::function<bool(std::string_view)>& take) {
  Reply reply = ask(request);
  if (reply.status < 300) take(reply.body);
  return reply;
}

std::string ageText(const std::string& madeAt, std::int64_t now) {
  const auto made = utcTicks(madeAt);
  if (!made) return "bundle of an unknown time";
  const std::int64_t age = std::max<std::int64_t>(0, now - *made / kTicksPerSecond);
  return "bundle of " + textForPeople(json::value(madeAt), {}) + ", " + durationText(age) + " old";
}

}  // namespace mirnctl
