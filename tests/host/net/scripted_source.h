#ifndef MIRN_TESTS_HOST_NET_SCRIPTED_SOURCE_H
#define MIRN_TESTS_HOST_NET_SCRIPTED_SOURCE_H

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <utility>

#include "answers/answer_parts.h"

namespace host {

/// What answers in parts are made of, as a test says. Safe from any thread.
class Script : public std::enable_shared_from_this<Script> {
 public:
  using Next = AnswerPart::Next;

  /// Of a type of its own.
  OpenAnswer open(const WakeSource& wake) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_wake = wake;
    ++m_sources;
    ++m_opened;
    m_changed.notify_all();
    return {{200, "text/plain", {}, {{"Mirn-Test", "parts"}}}, std::make_unique<Source>(shared_from_this())};
  }

  void add(const std::string& bytes, Next next) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_parts.push_back({bytes, next});
  }
  /// When there is no more.
  void fail() {
    endWith([]() -> AnswerPart { throw std::runtime_error("the script has come to its end"); });
  }
  void repeat(const AnswerPart& part) {
    endWith([part] { return part; });
  }
  /// Rings for the source that was opened last.
  void wake() {
    WakeSource wake;
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      wake = m_wake;
    }
    wake();
  }

  /// Holds up who asks.
  std::unique_lock<std::mutex> holdUp() { return std::unique_lock<std::mutex>(m_gate); }

  std::size_t taken() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_taken;
  }
  std::size_t opened() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_opened;
  }
  /// Until so many sources are there; false when that takes too long.
  bool awaitSources(std::size_t count) {
    return await([this, count] { return m_sources == count; });
  }
  bool awaitTaken(std::size_t count) {
    return await([this, count] { return m_taken >= count; });
  }

 private:
  class Source final : public AnswerSource {
   public:
    explicit Source(std::shared_ptr<Script> script) : m_script(std::move(script)) {}
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source() override { m_script->leave(); }
    AnswerPart take() override { return m_script->take(); }

   private:
    const std::shared_ptr<Script> m_script;
  };

  AnswerPart take() {
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      ++m_taken;
      m_changed.notify_all();
    }
    const std::lock_guard<std::mutex> gate(m_gate);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_parts.empty()) return m_onEmpty ? m_onEmpty() : AnswerPart();
    AnswerPart part = std::move(m_parts.front());
    m_parts.pop_front();
    return part;
  }
  void endWith(std::function<AnswerPart()> end) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_onEmpty = std::move(end);
  }
  void leave() {
    const std::lock_guard<std::mutex> lock(m_mutex);
    --m_sources;
    m_changed.notify_all();
  }
  bool await(const std::function<bool()>& isThere) {
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::seconds(20), isThere);
  }

  std::mutex m_gate;
  mutable std::mutex m_mutex;
  std::condition_variable m_changed;
  std::deque<AnswerPart> m_parts;
  std::function<AnswerPart()> m_onEmpty{};
  WakeSource m_wake{};
  std::size_t m_sources = 0;
  std::size_t m_opened = 0;
  std::size_t m_taken = 0;
};

}  // namespace host

#endif
