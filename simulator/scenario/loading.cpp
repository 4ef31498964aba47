#include "scenario/loading.h"

#include <algorithm>

#include "scenario/scenario.h"

namespace simulator {
namespace {

std::string quoted(const std::string& id) { return "\"" + id + "\""; }

}  // namespace

void Loading::addObject(const std::string& id, Kind kind, Handle& handle, const std::string& path) {
  const bool isNew = m_objects.emplace(id, Object{kind, &handle}).second;
  if (!isNew) throw ScenarioError(path + ".id: " + quoted(id) + " is taken by another object");
}

void Loading::addHandle(Handle& handle, const std::string& path) {
  if (handle == 0) {
    m_unnumbered.push_back({&handle, path});
  } else if (!m_paths.emplace(handle, path).second) {
    throw ScenarioError(path + ".handle: " + std::to_string(handle) + " is taken by " + m_paths[handle]);
  }
}

void Loading::addReference(std::string id, unsigned kinds, Handle& into, std::string path) {
  m_references.push_back({std::move(id), kinds, &into, std::move(path)});
}

void Loading::number(Handle& next) {
  if (!m_paths.empty()) next = std::max(next, m_paths.rbegin()->first + 1);
  next = std::max<Handle>(next, 1);
  for (const Unnumbered& object : m_unnumbered) {
    *object.handle = next++;
    m_paths.emplace(*object.handle, object.path);
  }
}

void Loading::resolve() {
  for (const Reference& reference : m_references) {
    const auto found = m_objects.find(reference.id);
    if (found == m_objects.end()) {
      throw ScenarioError(reference.path + ": no object has the id " + quoted(reference.id));
    }
    if ((found->second.kind & reference.kinds) == 0) {
      throw ScenarioError(reference.path + ": " + quoted(reference.id) + " is an object of another kind");
    }
    *reference.into = *found->second.handle;
  }
}

}  // namespace simulator
