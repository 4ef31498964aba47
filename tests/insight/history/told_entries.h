#ifndef MIRN_TESTS_INSIGHT_HISTORY_TOLD_ENTRIES_H
#define MIRN_TESTS_INSIGHT_HISTORY_TOLD_ENTRIES_H

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "history/history.h"

namespace insight {

/// What a history has told.
class ToldEntries {
 public:
  History::Listener listener() {
    return [this](const std::string& epoch, const Entry& entry) {
      const std::lock_guard<std::mutex> lock(m_mutex);
      m_told.emplace_back(epoch, entry);
      m_changed.notify_all();
    };
  }

  /// Until there are so many; false when that takes too long.
  bool wait(std::size_t count) {
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::seconds(20), [&] { return m_told.size() >= count; });
  }

  std::vector<Entry> entries() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<Entry> entries;
    for (const auto& [epoch, entry] : m_told) entries.push_back(entry);
    return entries;
  }

  std::vector<std::string> ids() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::vector<std::string> ids;
    for (const auto& [epoch, entry] : m_told) ids.push_back(epoch + '.' + std::to_string(entry.row));
    return ids;
  }

  std::set<std::string> epochs() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    std::set<std::string> epochs;
    for (const auto& [epoch, entry] : m_told) epochs.insert(epoch);
    return epochs;
  }

 private:
  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  std::vector<std::pair<std::string, Entry>> m_told;
};

}  // namespace insight

#endif
