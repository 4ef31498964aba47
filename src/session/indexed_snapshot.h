#ifndef MIRN_SESSION_INDEXED_SNAPSHOT_H
#define MIRN_SESSION_INDEXED_SNAPSHOT_H

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "id_index.h"
#include "mirn_snapshot.h"

/// The objects of a list by id. The index is made at the first look-up, which may come from any thread; from
/// then on the list must stay as it is.
template <class Object>
class ObjectsById {
 public:
  /// `objects` must outlive this.
  explicit ObjectsById(const std::vector<Object>& objects) : m_objects(objects) {}

  /// The first with this id; null when there is none.
  const Object* find(const std::wstring& id) const {
    std::call_once(m_made, [this] { m_index.emplace(m_objects); });
    return m_index->find(id);
  }

 private:
  const std::vector<Object>& m_objects;
  mutable std::once_flag m_made;
  mutable std::optional<IdIndex<Object>> m_index;
};

/// A finished picture: it doesn't change any more, and so its objects can be found by id.
class IndexedSnapshot : public MirnSnapshot {
 public:
  IndexedSnapshot() = default;
  explicit IndexedSnapshot(MirnSnapshot snapshot) : MirnSnapshot(std::move(snapshot)) {}
  IndexedSnapshot(const IndexedSnapshot&) = delete;
  IndexedSnapshot& operator=(const IndexedSnapshot&) = delete;

  const ObjectsById<Raid> raidsById{raids};
  const ObjectsById<Controller> controllersById{controllers};
  const ObjectsById<Array> arraysById{arrays};
  const ObjectsById<EndDevice> endDevicesById{endDevices};
  const ObjectsById<Port> portsById{ports};
  const ObjectsById<Volume> volumesById{volumes};
};

/// A picture as it is shared: whoever holds it reads it without a lock, for as long as they like.
using Picture = std::shared_ptr<const IndexedSnapshot>;

#endif
