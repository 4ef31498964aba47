#ifndef MIRN_SIMULATOR_SCENARIO_LOADING_H
#define MIRN_SIMULATOR_SCENARIO_LOADING_H

#include <list>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "scenario/fields.h"
#include "session_handles.h"

namespace simulator {

/// What is learned of a scenario while it is read: objects and their handles, and who refers to whom. Objects
/// wait here in lists, where they do not move, until every reference is resolved.
class Loading {
 public:
  /// Raises `ScenarioError` when another object has the id.
  void addObject(const std::string& id, Kind kind, Handle& handle, const std::string& path);

  /// Raises `ScenarioError` when another object has the handle; 0 asks for one.
  void addHandle(Handle& handle, const std::string& path);

  void addReference(std::string id, unsigned kinds, Handle& into, std::string path);

  /// Gives a handle to each object that has none, in the order of the file and from `next` on, and raises
  /// `next` above all of them.
  void number(Handle& next);

  /// Writes the handle of the object into each reference to it.
  void resolve();

  template <class T>
  std::list<T>& waiting() {
    return std::get<std::list<T>>(m_waiting);
  }

  /// Where in the file the object with this handle stands.
  std::string pathOf(Handle handle) const { return m_paths.at(handle); }

 private:
  struct Object {
    Kind kind;
    Handle* handle;
  };
  struct Reference {
    std::string id;
    unsigned kinds;
    Handle* into;
    std::string path;
  };
  struct Unnumbered {
    Handle* handle;
    std::string path;
  };

  std::map<std::string, Object> m_objects;
  std::map<Handle, std::string> m_paths;
  std::vector<Reference> m_references;
  std::vector<Unnumbered> m_unnumbered;
  std::tuple<std::list<RaidEngine>, std::list<Controller>, std::list<EndDevice>, std::list<Port>,
             std::list<Array>, std::list<Volume>>
      m_waiting;
};

}  // namespace simulator

#endif
