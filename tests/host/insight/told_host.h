#ifndef MIRN_TESTS_HOST_INSIGHT_TOLD_HOST_H
#define MIRN_TESTS_HOST_INSIGHT_TOLD_HOST_H

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "history/history.h"
#include "host/net/served_table.h"
#include "service/history_past.h"
#include "stream/stream.h"

namespace host {

/// Lets in who shows a role as the token, until nobody is let in any more.
class RoleTokens final : public IAuthenticator {
 public:
  Identity identify(const Credentials& credentials) const override {
    const bool administers = credentials.authorization == "Bearer administer";
    return {"somebody", administers ? Role::kAdminister : Role::kObserve, "proof"};
  }
  bool stillHolds(const Identity&) const override { return isOpen; }

  std::atomic<bool> isOpen{true};
};

/// A host in this process that streams and exports a history, which the test fills. Stopped and started anew
/// it goes on with the same file.
class ToldHost {
 public:
  struct Settings {
    std::string historyPath;  ///< Empty: none is kept.
    std::int64_t entriesKept = 1'000'000;
    insight::Stream::Settings stream{};
    std::size_t mostListeners = 1000;
    Options options = ServedTable::usual();
  };

  explicit ToldHost(Settings settings) : m_settings(std::move(settings)) { start(); }
  ~ToldHost() { stop(); }

  void start();
  /// As the host's main does: those who listen first. False when something was still under way.
  bool stop();

  /// So many further events, the number of each in its details, with so many bytes beside it. Nothing while
  /// the host is stopped.
  void tell(std::uint64_t count, std::size_t bytes = 0, const std::string& kind = "event");
  /// The number of the last; its row, too.
  std::uint64_t told() const { return m_told; }
  /// Until all of it has been kept, or the host is stopped.
  void awaitKept();
  /// Both, for as many as there may be.
  void keep(std::uint64_t count, std::size_t bytes = 0);

  std::uint16_t port() const { return m_served->port(); }
  insight::Stream& stream() { return *m_stream; }
  std::string epoch() { return m_history->epoch(); }

  RoleTokens tokens;

 private:
  const Settings m_settings;
  std::atomic<std::uint64_t> m_told{0};
  std::mutex m_mutex;  // of telling and stopping
  insight::HistoryPast m_past;
  std::shared_ptr<insight::Stream> m_stream;
  std::shared_ptr<insight::History> m_history;
  std::unique_ptr<ServedTable> m_served;
};

}  // namespace host

#endif
