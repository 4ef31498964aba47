#include "revisions/revision_watch.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>

namespace host {

namespace {

/// How long the thread stays in the plug-in, at most, when nothing changes.
constexpr std::chrono::milliseconds kTurn{1000};

bool differs(const ovra::PluginPosition& known, const ovra::PluginPosition& now, bool countsEvents) {
  return known.revision != now.revision || known.epoch != now.epoch ||
         (countsEvents && known.sequence != now.sequence);
}

}  // namespace

RevisionWatch::RevisionWatch(ovra::watched_plugin_1& plugin, std::size_t most)
    : m_plugin(plugin), m_most(most), m_thread([this] { run(); }) {}

RevisionWatch::~RevisionWatch() {
  announceStop();
  m_thread.join();
}

RevisionWatch::Place::Place(RevisionWatch& watch) : m_watch(watch) {}

RevisionWatch::Place::~Place() {
  const std::lock_guard<std::mutex> lock(m_watch.m_mutex);
  m_watch.m_places.erase(m_self);
}

void RevisionWatch::Place::await(const ovra::PluginPosition& known, bool countsEvents, Wake wake) {
  {
    const std::lock_guard<std::mutex> lock(m_watch.m_mutex);
    m_known = known;
    m_countsEvents = countsEvents;
    m_wake = wake;
  }
  m_watch.m_changed.notify_all();
  // What the thread waits for may be a later change than the one that is missed here.
  if (!differs(known, m_watch.m_plugin.position(), countsEvents)) return;
  {
    const std::lock_guard<std::mutex> lock(m_watch.m_mutex);
    m_wake = {};
  }
  wake();
}

std::unique_ptr<RevisionWatch::Place> RevisionWatch::takePlace() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (m_places.size() >= m_most) return {};
  std::unique_ptr<Place> place(new Place(*this));
  place->m_self = m_places.insert(m_places.end(), place.get());
  return place;
}

void RevisionWatch::announceStop() {
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isStopping = true;
  }
  m_changed.notify_all();
}

void RevisionWatch::run() {
  std::unique_lock<std::mutex> lock(m_mutex);
  for (;;) {
    m_changed.wait(lock, [this] { return m_isStopping || isAwaited(); });
    if (m_isStopping) return;
    lock.unlock();
    try {
      awaitChange();
      lock.lock();
    } catch (const std::exception&) {  // those who wait have a time of their own
      lock.lock();
      pause(lock);
    }
  }
}

/// Without the lock.
void RevisionWatch::awaitChange() {
  const ovra::PluginPosition now = m_plugin.position();
  const auto begun = std::chrono::steady_clock::now();
  for (const Wake& wake : takeWoken(now)) wake();
  if (m_plugin.waitForChange(now, kTurn.count())) return;
  if (std::chrono::steady_clock::now() - begun >= kTurn / 2) return;
  std::unique_lock<std::mutex> lock(m_mutex);
  pause(lock);  // a plug-in that waits for nobody, as at its end
}

void RevisionWatch::pause(std::unique_lock<std::mutex>& lock) {
  m_changed.wait_for(lock, kTurn, [this] { return m_isStopping; });
}

/// Under the lock.
bool RevisionWatch::isAwaited() const {
  return std::any_of(m_places.begin(), m_places.end(),
                     [](const Place* place) { return place->m_wake != nullptr; });
}

std::list<RevisionWatch::Wake> RevisionWatch::takeWoken(const ovra::PluginPosition& now) {
  std::list<Wake> woken;
  const std::lock_guard<std::mutex> lock(m_mutex);
  for (Place* const place : m_places) {
    if (!place->m_wake || !differs(place->m_known, now, place->m_countsEvents)) continue;
    woken.push_back(std::exchange(place->m_wake, {}));
  }
  return woken;
}

}  // namespace host
