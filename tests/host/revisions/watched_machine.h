#ifndef MIRN_TESTS_HOST_REVISIONS_WATCHED_MACHINE_H
#define MIRN_TESTS_HOST_REVISIONS_WATCHED_MACHINE_H

#include <chrono>
#include <condition_variable>
#include <mutex>

#include "plugin_extensions.h"

namespace host {

/// A machine that changes when a test says so. Safe from any thread.
class WatchedMachine final : public ovra::watched_plugin_1 {
 public:
  ovra::PluginPosition position() override {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_position;
  }

  bool waitForChange(const ovra::PluginPosition& known, std::int64_t milliseconds) override {
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] {
      return known.revision != m_position.revision || known.sequence != m_position.sequence;
    });
  }

  ovra::data_transfer::ServiceObject eventsAfter(std::uint64_t, std::uint64_t) override { return {}; }
  ovra::data_transfer::ServiceObject picture() override { return {}; }

  void change() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_position.revision;
    ++m_position.structure;
    m_changed.notify_all();
  }

  void addEvent() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_position.sequence;
    m_changed.notify_all();
  }

 private:
  std::mutex m_mutex;
  std::condition_variable m_changed;
  ovra::PluginPosition m_position{L"0123456789abcdef", 7, 5, 3};
};

}  // namespace host

#endif
