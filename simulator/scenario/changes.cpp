#include "scenario/changes.h"

#include <boost/json.hpp>
#include <map>

#include "scenario/object_comparer.h"
#include "scenario/object_writer.h"
#include "scenario/parse.h"
#include "scenario/scenario.h"
#include "session_handles.h"

namespace simulator {
namespace {

namespace json = boost::json;

constexpr char kRemoved[] = "removed";
constexpr char kNextHandle[] = "nextHandle";
constexpr const char* kLists[] = {"engines", "controllers", "devices", "ports", "arrays", "volumes"};

/// Adds what differs in one table.
template <class T>
void collect(const char* list, const Table<T>& table, const IdsOf& ids, json::object& line) {
  for (const auto& [handle, original] : table.originals()) {
    const T* const present = table.find(handle);
    if (present == nullptr) {
      if (!original) continue;  // came and went
      if (!line.contains(kRemoved)) line[kRemoved].emplace_array();
      line[kRemoved].get_array().emplace_back(handle);
    } else if (!original || !ObjectComparer<T>(*original, *present).areAlike()) {
      if (!line.contains(list)) line[list].emplace_array();
      line[list].get_array().emplace_back(ObjectWriter<T>(*present, ids).write());
    }
  }
}

[[noreturn]] void fail(const std::string& name, const std::string& text) {
  throw ScenarioError(name + ": " + text);
}

Handle handleOf(const json::value& object, const std::string& name) {
  const json::value* const handle = object.is_object() ? object.get_object().if_contains("handle") : &object;
  if (handle == nullptr || !handle->is_int64() || handle->get_int64() < 1 ||
      handle->get_int64() >= vexl2::kFirstSessionHandle) {
    fail(name, "an object without a handle");
  }
  return static_cast<Handle>(handle->get_int64());
}

/// The lists of a scenario file, their objects by handle.
class Lists {
 public:
  explicit Lists(json::object& file) : m_file(file) {
    for (const char* const list : kLists) {
      json::value* const objects = m_file.if_contains(list);
      if (objects == nullptr || !objects->is_array()) continue;  // the reader says what is wrong
      for (json::value& object : objects->get_array()) {
        put(list, std::move(object), std::string(list));
      }
    }
  }

  void apply(const json::value& line, const std::string& name) {
    if (!line.is_object()) fail(name, "not an object");
    for (const auto& member : line.get_object()) {
      if (member.key() == kNextHandle) {
        m_file[kNextHandle] = member.value();
      } else if (member.key() == kRemoved) {
        for (const json::value& handle : arrayOf(member.value(), name)) remove(handleOf(handle, name));
      } else {
        const char* const list = listNamed(member.key(), name);
        for (const json::value& object : arrayOf(member.value(), name)) put(list, object, name);
      }
    }
  }

  void writeBack() {
    for (auto& [list, objects] : m_objects) {
      json::array& array = m_file[list].emplace_array();
      for (auto& entry : objects) array.emplace_back(std::move(entry.second));
    }
  }

 private:
  static const json::array& arrayOf(const json::value& value, const std::string& name) {
    if (!value.is_array()) fail(name, "not an array");
    return value.get_array();
  }

  static const char* listNamed(json::string_view key, const std::string& name) {
    for (const char* const list : kLists) {
      if (key == list) return list;
    }
    fail(name, "unknown key \"" + std::string(key) + "\"");
  }

  void put(const char* list, json::value object, const std::string& name) {
    const Handle handle = handleOf(object, name);
    m_objects[list][handle] = std::move(object);
  }

  void remove(Handle handle) {
    for (auto& entry : m_objects) entry.second.erase(handle);
  }

  json::object& m_file;
  std::map<std::string, std::map<Handle, json::value>> m_objects;
};

}  // namespace

std::string writeChanges(const Edit& edit) {
  const Machine& machine = edit.machine();
  const IdsOf ids(machine);
  json::object line;
  collect("engines", machine.engines, ids, line);
  collect("controllers", machine.controllers, ids, line);
  collect("devices", machine.devices, ids, line);
  collect("ports", machine.ports, ids, line);
  collect("arrays", machine.arrays, ids, line);
  collect("volumes", machine.volumes, ids, line);
  if (machine.nextHandle != edit.nextHandleBefore()) line[kNextHandle] = machine.nextHandle;
  return line.empty() ? "" : json::serialize(line) + "\n";
}

std::string writeProgress(const Machine& machine) {
  const IdsOf ids(machine);
  json::array volumes;
  for (const auto& entry : machine.volumes) {
    if (entry.second.work) volumes.emplace_back(ObjectWriter<Volume>(entry.second, ids).write());
  }
  return volumes.empty() ? "" : json::serialize(json::object{{"volumes", std::move(volumes)}}) + "\n";
}

Machine readScenarioWithChanges(std::string_view scenario, const std::vector<std::string_view>& changes,
                                const std::vector<std::string>& lineNames) {
  if (changes.empty()) return readScenario(scenario);
  json::value file = parseJson(scenario);
  if (!file.is_object()) throw ScenarioError("the file: not an object");
  Lists lists(file.get_object());
  for (std::size_t i = 0; i < changes.size(); ++i) {
    try {
      lists.apply(parseJson(changes[i]), lineNames[i]);
    } catch (const NotJson& error) {
      fail(lineNames[i], error.what());
    }
  }
  lists.writeBack();
  return readParsedScenario(file);
}

}  // namespace simulator
