#ifndef MIRN_INSIGHT_STREAM_STREAM_H
#define MIRN_INSIGHT_STREAM_STREAM_H

#include <boost/json/object.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "history/entry.h"
#include "stream/told_ring.h"

namespace insight {

/// Where a stream finds what it does not hold any more. Safe from any thread; may raise.
class StreamPast {
 public:
  virtual ~StreamPast() = default;

  /// Of its rows; empty while there are none to be had.
  virtual std::string epoch() = 0;
  virtual std::int64_t oldestRow() = 0;
  virtual std::int64_t newestRow() = 0;
  /// Oldest first.
  virtual std::vector<Entry> entriesAfter(std::int64_t row, std::size_t limit) = 0;
};

/// What happens, for everybody who listens: each entry once, in order, or told as missing. Nobody's slowness
/// holds up anybody else, and a listener costs no thread and no copies. Safe from any thread.
class Stream {
 public:
  struct Settings {
    std::size_t held = 10'000;                 ///< Entries, for those who come back soon.
    std::uint64_t longestQueue = 1024 * 1024;  ///< Bytes that may wait for a listener.
    std::size_t largestPart = 64 * 1024;       ///< Bytes that are given out at once, more or less.
    std::int64_t heartbeatMs = 15'000;
  };

  /// Called when there is something to take; raises nothing, comes back at once, and may come in vain.
  using Wake = std::function<void()>;

  class Listener;

  /// `past` outlives the stream; null where nothing is kept.
  explicit Stream(StreamPast* past) : Stream(past, Settings()) {}
  Stream(StreamPast* past, Settings settings);
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  void tell(const std::string& epoch, const Entry& entry);
  /// The plug-in stands there now. Of several that a listener has not heard yet, it hears the last.
  void tellPosition(const boost::json::object& position);
  /// Ends all listeners with a word.
  void stop();

  /// Behind the entry of `lastId`, or from now on where that is empty. The listener goes before the stream.
  std::unique_ptr<Listener> listen(const std::string& lastId, bool withAudit, Wake wake);

  std::size_t listeners() const;

 private:
  friend class Listener;

  void wakeAll();

  StreamPast* const m_past;
  const Settings m_settings;
  mutable std::mutex m_mutex;
  ToldRing m_ring;
  std::string m_position;
  std::uint64_t m_positions = 0;
  bool m_isStopped = false;
  std::list<Listener*> m_listeners;
};

/// One client that listens. One thread at a time, beside the stream's own.
class Stream::Listener {
 public:
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  /// What there is to be sent, `nowMs` being of a clock that only goes on; empty while there is nothing.
  std::string take(std::int64_t nowMs);

  /// Nothing comes any more: the stream has stopped, or too much waited for this one, which may come back.
  bool isClosed() const;

  /// It reads the past still: there is more at once, even where `take` gave nothing.
  bool isBehind() const { return m_past.has_value(); }

 private:
  friend class Stream;
  Listener(Stream& stream, bool withAudit, Wake wake);

  void resume(const std::string& lastId);
  bool isStopping() const;
  std::string leavePast();
  std::string takePast();
  void joinHeld(bool hasReadAll);
  std::string takeHeld();
  std::string gapToNow(std::int64_t first);

  Stream& m_stream;
  const bool m_withAudit;
  Wake m_wake;

  std::string m_ahead{};                ///< To be sent before all else.
  std::optional<StreamId> m_past{};     ///< Reading the past, behind this entry.
  std::optional<StreamId> m_pastEnd{};  ///< What has been read may be told only now; it was heard already.
  std::uint64_t m_place = 0;            ///< The next of those that are held.
  bool m_isThere = false;               ///< It has had all once: from then on what waits for it is counted.
  bool m_isClosed = false;
  std::uint64_t m_positions = 0;
  std::optional<std::int64_t> m_sentMs{};
  std::list<Listener*>::iterator m_self{};
};

}  // namespace insight

#endif
