#ifndef MIRN_SESSION_INDEXED_SNAPSHOT_H
#define MIRN_SESSION_INDEXED_SNAPSHOT_H

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "mirn_snapshot.h"

/// The objects of a list by id, of several with one id the first. Made at the first look-up, which may come
/// from any thread; from then on the list must stay as it is.
template <class Object>
class IdIndex {
 public:
  /// `objects` must outlive the index.
  explicit IdIndex(const std::vector<Object>& objects) : m_objects(objects) {}

  /// Null when there is none.
  const Object* find(const std::wstring& id) const {
    std::call_once(m_made, [this] { make(); });
    const auto found = m_byId.find(id);
    return found == m_byId.end() ? nullptr : found->second;
  }

 private:
  void make() const {
    m_byId.reserve(m_objects.size());
    for (const Object& object : m_objects) m_byId.emplace(object.id(), &object);
  }

  const std::vector<Object>& m_objects;
  mutable std::once_flag m_made;
  mutable std::unordered_map<std::wstring_view, const Object*> m_byId;
};

/// A finished picture: it doesn't change any more, and so its objects can be found by id.
class IndexedSnapshot : public MirnSnapshot {
 public:
  IndexedSnapshot() = default;
  explicit IndexedSnapshot(MirnSnapshot snapshot) : MirnSnapshot(std::move(snapshot)) {}
  IndexedSnapshot(const IndexedSnapshot&) = delete;
  IndexedSnapshot& operator=(const IndexedSnapshot&) = delete;

  const IdIndex<Raid> raidsById{raids};
  const IdIndex<Controller> controllersById{controllers};
  const IdIndex<Array> arraysById{arrays};
  const IdIndex<EndDevice> endDevicesById{endDevices};
  const IdIndex<Port> portsById{ports};
  const IdIndex<Volume> volumesById{volumes};
};

/// A picture as it is shared: whoever holds it reads it without a lock, for as long as they like.
using Picture = std::shared_ptr<const IndexedSnapshot>;

#endif
