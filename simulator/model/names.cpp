#include "model/names.h"

#include <algorithm>

namespace simulator {
namespace {

bool isNameCharacter(char c) { return c >= ' ' && c <= '~' && c != '\\'; }

bool isArrayName(const Machine& machine, std::string_view name) {
  return std::any_of(machine.arrays.begin(), machine.arrays.end(),
                     [&](const auto& entry) { return entry.second.name == name; });
}

template <class T>
bool holdsId(const Table<T>& table, std::string_view id) {
  return std::any_of(table.begin(), table.end(), [&](const auto& entry) { return entry.second.id == id; });
}

bool isIdTaken(const Machine& machine, std::string_view id) {
  return holdsId(machine.engines, id) || holdsId(machine.controllers, id) || holdsId(machine.devices, id) ||
         holdsId(machine.ports, id) || holdsId(machine.arrays, id) || holdsId(machine.volumes, id);
}

}  // namespace

std::string newId(const Machine& machine, std::string_view prefix, Handle handle) {
  std::string id = std::string(prefix) + std::to_string(handle);
  while (isIdTaken(machine, id)) id += '+';
  return id;
}

bool isVolumeName(std::string_view name) {
  return !name.empty() && name.size() <= kMaxVolumeNameSize && name.front() != ' ' &&
         std::all_of(name.begin(), name.end(), isNameCharacter);
}

const Volume* findVolumeByName(const Machine& machine, std::string_view name) {
  const auto found = std::find_if(machine.volumes.begin(), machine.volumes.end(),
                                  [&](const auto& entry) { return entry.second.name == name; });
  return found == machine.volumes.end() ? nullptr : &found->second;
}

std::string nameOfNewArray(const Machine& machine) {
  for (std::size_t number = 0;; ++number) {
    std::string name = "Array_" + std::to_string(number);
    if (!isArrayName(machine, name)) return name;
  }
}

}  // namespace simulator
