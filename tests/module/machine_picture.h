#ifndef MIRN_TESTS_MODULE_MACHINE_PICTURE_H
#define MIRN_TESTS_MODULE_MACHINE_PICTURE_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "ServiceObject.h"

using ObjectIds = std::set<std::wstring>;

/// The objects of a machine as one picture of a watched plug-in shows them, by the types that effects name.
class MachinePicture {
 public:
  using Objects = std::map<std::wstring, ovra::data_transfer::ServiceObject>;  ///< By their ids.

  /// `picture` is what `ovra::watched_plugin_1::picture` answers.
  explicit MachinePicture(const ovra::data_transfer::ServiceObject& picture);

  /// "controller", "disk", "port", "array", "volume".
  static const std::vector<std::wstring>& types();

  const Objects& objects(const std::wstring& type) const { return m_objects.at(type); }
  /// Those of a type that show this text under a key.
  ObjectIds having(const std::wstring& type, const std::wstring& key, const std::wstring& text) const;
  /// The arrays that an object is, is a member of, or stands on.
  ObjectIds arraysOf(const std::wstring& id) const;
  /// The words of the work that is under way, by the ids of the volumes.
  const std::map<std::wstring, std::wstring>& work() const { return m_work; }

 private:
  std::map<std::wstring, Objects> m_objects;
  std::map<std::wstring, std::wstring> m_work;
};

/// What became of the objects of a type between two pictures.
struct ObjectChanges {
  ObjectIds came;
  ObjectIds went;
  ObjectIds changed;
};

ObjectChanges changesOf(const std::wstring& type, const MachinePicture& before, const MachinePicture& after);

#endif
