#include "net/connections.h"

#include <algorithm>
#include <utility>

namespace host {

// An occupant's end takes the lock: a pointer that may be the last one goes after the lock does.

Connections::Connections(const Limits& limits)
    : m_max(limits.connections), m_maxOfOne(limits.connectionsOfOne) {}

bool Connections::add(const std::shared_ptr<Occupant>& occupant, const Client& client) {
  const std::string address = client.isLoopback ? std::string() : client.address;
  Leaving leaving;
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_isStopped) return false;
  while (!hasPlace(address)) {
    const bool isFullForAll = m_places.size() >= m_max;
    if (!freePlace(isFullForAll ? nullptr : &address, leaving)) return false;
  }
  for (const auto& one : leaving) one->giveUp();
  Place& place = m_places[occupant.get()];
  place.occupant = occupant;
  place.address = address;
  place.self = m_awake.insert(m_awake.end(), occupant.get());
  beginRest(place);
  if (!address.empty()) ++m_countOf[address];
  return true;
}

void Connections::remove(const Occupant* occupant) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  forget(occupant);
}

void Connections::rest(const Occupant* occupant) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = m_places.find(occupant);
  if (found != m_places.end() && !found->second.isResting) beginRest(found->second);
}

void Connections::wake(const Occupant* occupant) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = m_places.find(occupant);
  if (found != m_places.end()) endRest(found->second);
}

void Connections::closeLongestResting() {
  Leaving leaving;
  const std::lock_guard<std::mutex> lock(m_mutex);
  freePlace(nullptr, leaving);
  for (const auto& one : leaving) one->giveUp();
}

void Connections::stop() {
  Leaving leaving;
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_isStopped = true;
  for (const auto& [occupant, place] : m_places) {
    if (auto shared = place.occupant.lock()) leaving.push_back(std::move(shared));
  }
  for (const auto& one : leaving) one->stop();
}

/// Takes the place of the longest resting one, of `address` or of all; false when none rests. Who is still
/// there has to be told, and is put into `leaving`.
bool Connections::freePlace(const std::string* address, Leaving& leaving) {
  const auto longest = std::find_if(m_resting.begin(), m_resting.end(), [&](const Occupant* occupant) {
    return !address || m_places.at(occupant).address == *address;
  });
  if (longest == m_resting.end()) return false;
  const Occupant* const occupant = *longest;
  if (auto shared = m_places.at(occupant).occupant.lock()) leaving.push_back(std::move(shared));
  forget(occupant);
  return true;
}

bool Connections::hasPlace(const std::string& address) const {
  if (m_places.size() >= m_max) return false;
  const auto count = m_countOf.find(address);
  return count == m_countOf.end() || count->second < m_maxOfOne;
}

void Connections::forget(const Occupant* occupant) {
  const auto found = m_places.find(occupant);
  if (found == m_places.end()) return;
  endRest(found->second);
  m_awake.erase(found->second.self);
  const auto count = m_countOf.find(found->second.address);
  if (count != m_countOf.end() && --count->second == 0) m_countOf.erase(count);
  m_places.erase(found);
}

void Connections::beginRest(Place& place) {
  m_resting.splice(m_resting.end(), m_awake, place.self);
  place.isResting = true;
}

void Connections::endRest(Place& place) {
  if (place.isResting) m_awake.splice(m_awake.end(), m_resting, place.self);
  place.isResting = false;
}

}  // namespace host
