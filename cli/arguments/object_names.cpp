#include "arguments/object_names.h"

#include <algorithm>

#include "answers/record.h"
#include "exit_status.h"
#include "wire/answers.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

/// By these people know an object, besides its id.
constexpr const char* kNames[] = {"name", "serialNumber"};
constexpr const char* kIds[] = {"id", "raidId"};
constexpr std::size_t kMostCandidates = 10;

std::string firstText(const json::object& record, const char* const* begin, const char* const* end) {
  for (; begin != end; ++begin) {
    const json::value* const value = record.if_contains(*begin);
    if (value != nullptr && !plainText(*value).empty()) return plainText(*value);
  }
  return {};
}

std::string idIn(const json::object& record) { return firstText(record, std::begin(kIds), std::end(kIds)); }
std::string nameIn(const json::object& record) {
  return firstText(record, std::begin(kNames), std::end(kNames));
}

/// By its own names, or by that of the object that it is about.
bool isNamed(const json::object& record, const std::string& text) {
  const bool isItself = std::any_of(std::begin(kNames), std::end(kNames), [&](const char* name) {
    const json::value* const value = record.if_contains(name);
    return value != nullptr && plainText(*value) == text;
  });
  return isItself || (!record.contains("name") && textAt(record, "object.name") == text);
}

using Matches = std::vector<const json::object*>;

template <typename Condition>
Matches matches(const json::array& list, const Condition& isMeant) {
  Matches found;
  for (const json::value& each : list) {
    if (each.is_object() && isMeant(each.get_object())) found.push_back(&each.get_object());
  }
  return found;
}

[[noreturn]] void refuseAmbiguous(const std::string& type, const std::string& text, const Matches& found) {
  std::string candidates;
  for (std::size_t place = 0; place < found.size() && place < kMostCandidates; ++place) {
    candidates += (place == 0 ? "" : ", ") + idIn(*found[place]);
    const std::string name = nameIn(*found[place]);
    if (!name.empty()) candidates += " (" + name + ")";
  }
  if (found.size() > kMostCandidates) candidates += " …";
  throw Failure(ExitStatus::kUsage, "more than one " + type + " is '" + text + "'",
                "it may be " + candidates);
}

}  // namespace

const json::array* ObjectNames::listOf(const std::string& type) {
  const Operation* const operation = m_document.find(type + "s", "list");
  if (operation == nullptr || operation->path.find('{') != std::string::npos) return nullptr;
  const auto found = m_lists.find(type);
  if (found != m_lists.end()) return &found->second;
  return &m_lists.emplace(type, allRecords(m_service, *operation)).first->second;
}

const json::object& ObjectNames::recordOf(const std::string& type, const std::string& text) {
  const json::array* const list = listOf(type);
  if (list == nullptr) throw Failure(ExitStatus::kUsage, "nothing lists objects of the type " + type);
  Matches found = matches(*list, [&](const json::object& each) { return idIn(each) == text; });
  if (found.empty()) found = matches(*list, [&](const json::object& each) { return isNamed(each, text); });
  if (found.empty() && !text.empty()) {
    found = matches(*list,
                    [&](const json::object& each) { return idIn(each).compare(0, text.size(), text) == 0; });
  }
  if (found.empty()) {
    throw Failure(ExitStatus::kNotFound, "there is no " + type + " '" + text + "'",
                  "'mirnctl " + type + "s list' tells which there are");
  }
  if (found.size() > 1) refuseAmbiguous(type, text, found);
  return *found.front();
}

std::vector<ObjectNames::Named> ObjectNames::allOf(const std::string& type) {
  std::vector<Named> all;
  const json::array* const list = listOf(type);
  if (list == nullptr) return all;
  std::map<std::string, int> sharers;
  for (const json::object* each : matches(*list, [](const json::object&) { return true; })) {
    const std::string name = nameIn(*each);
    all.push_back({idIn(*each), name.empty() ? idIn(*each) : name, each});
    ++sharers[all.back().name];
  }
  for (Named& each : all) {
    if (sharers[each.name] > 1) each.name = each.id;
  }
  return all;
}

std::string ObjectNames::idOf(const std::string& type, const std::string& text) {
  const json::array* const list = listOf(type);
  if (list == nullptr) return text;
  try {
    return idIn(recordOf(type, text));
  } catch (const Failure& failure) {
    // A list with pages tells of what is there now; what was is known by its id.
    const bool mayHaveBeen = m_document.find(type + "s", "list")->answersPage;
    if (failure.status() != ExitStatus::kNotFound || !mayHaveBeen) throw;
    return text;
  }
}

std::string ObjectNames::nameOf(const std::string& type, const std::string& id) {
  const json::array* const list = listOf(type);
  if (list == nullptr) return id;
  for (const json::object* each : matches(*list, [&](const json::object& one) { return idIn(one) == id; })) {
    if (!nameIn(*each).empty()) return nameIn(*each);
  }
  return id;
}

}  // namespace mirnctl
