#include "stream/stream.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "stream/frames.h"

namespace insight {

namespace {

/// Entries of the past that are read at once.
constexpr std::size_t kPastPart = 200;

}  // namespace

Stream::Stream(StreamPast* past, Settings settings)
    : m_past(past), m_settings(settings), m_ring(settings.held) {}

void Stream::tell(const std::string& epoch, const Entry& entry) {
  std::string frame = frames::ofEntry(epoch, entry);
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_ring.add({epoch, entry.row}, std::move(frame), entry.kind == "audit");
  wakeAll();
}

void Stream::tellPosition(const boost::json::object& position) {
  std::string frame = frames::ofRevision(position);
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_position = std::move(frame);
  ++m_positions;
  wakeAll();
}

void Stream::stop() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_isStopped = true;
  wakeAll();
}

/// Under the lock, so that nobody is woken who has gone.
void Stream::wakeAll() {
  for (Listener* const listener : m_listeners) {
    if (listener->m_isThere && m_ring.begin() > listener->m_place) listener->m_isClosed = true;
    if (listener->m_isThere && !listener->m_isClosed &&
        m_ring.bytesFrom(listener->m_place) > m_settings.longestQueue) {
      listener->m_isClosed = true;
    }
    if (listener->m_wake) listener->m_wake();
  }
}

std::unique_ptr<Stream::Listener> Stream::listen(const std::string& lastId, bool withAudit, Wake wake) {
  std::unique_ptr<Listener> listener(new Listener(*this, withAudit, std::move(wake)));
  listener->resume(lastId);
  return listener;
}

std::size_t Stream::listeners() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_listeners.size();
}

Stream::Listener::Listener(Stream& stream, bool withAudit, Wake wake)
    : m_stream(stream), m_withAudit(withAudit), m_wake(std::move(wake)) {
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  m_place = m_stream.m_ring.end();
  m_positions = m_stream.m_positions;
  m_self = m_stream.m_listeners.insert(m_stream.m_listeners.end(), this);
}

Stream::Listener::~Listener() {
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  m_stream.m_listeners.erase(m_self);
}

bool Stream::Listener::isClosed() const {
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  return m_isClosed;
}

void Stream::Listener::resume(const std::string& lastId) {
  if (lastId.empty()) return;
  const auto id = streamIdOf(lastId);
  if (id) {
    const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
    if (const auto place = m_stream.m_ring.placeBehind(*id)) {
      m_place = *place;
      return;
    }
  }
  StreamPast* const past = m_stream.m_past;
  try {
    if (id && past != nullptr && past->epoch() == id->epoch && id->row <= past->newestRow()) {
      m_past = id;
      return;
    }
  } catch (const std::exception&) {  // told as missing
  }
  m_ahead = gapToNow(0);
}

/// All that this one will not get, of which nobody knows more than where it ends.
std::string Stream::Listener::gapToNow(std::int64_t first) {
  StreamId last;
  try {
    if (m_stream.m_past != nullptr) last = {m_stream.m_past->epoch(), m_stream.m_past->newestRow()};
    if (first == 0 && !last.epoch.empty()) first = m_stream.m_past->oldestRow();
  } catch (const std::exception&) {
    last = {};
  }
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  const ToldRing& ring = m_stream.m_ring;
  m_place = ring.end();
  m_past.reset();
  if (ring.begin() != ring.end()) {
    last = ring.at(ring.end() - 1).id;
  } else {
    m_pastEnd = last;
  }
  if (last.epoch.empty()) return {};
  return frames::ofGap(last.epoch, std::max<std::int64_t>(first, 1), last.row);
}

std::string Stream::Listener::take(std::int64_t nowMs) {
  std::string bytes = std::exchange(m_ahead, {});
  if (m_past) bytes += isStopping() ? leavePast() : takePast();
  if (!m_past) bytes += takeHeld();
  if (!m_sentMs || !bytes.empty()) {
    m_sentMs = nowMs;
  } else if (nowMs - *m_sentMs >= m_stream.m_settings.heartbeatMs && !isClosed()) {
    m_sentMs = nowMs;
    bytes = frames::ofHeartbeat();
  }
  return bytes;
}

bool Stream::Listener::isStopping() const {
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  return m_stream.m_isStopped;
}

/// It may come back for the rest.
std::string Stream::Listener::leavePast() {
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  m_place = m_stream.m_ring.end();
  m_past.reset();
  return {};
}

std::string Stream::Listener::takePast() {
  std::vector<Entry> entries;
  std::int64_t oldest = 0;
  std::int64_t newest = 0;
  try {
    newest = m_stream.m_past->newestRow();
    entries = m_stream.m_past->entriesAfter(m_past->row, kPastPart);
    oldest = m_stream.m_past->oldestRow();
    if (m_stream.m_past->epoch() != m_past->epoch) return gapToNow(0);  // another past by now
  } catch (const std::exception&) {
    return gapToNow(m_past->row + 1);
  }
  std::string bytes;
  const std::int64_t next = m_past->row + 1;
  if (!entries.empty() && entries.front().row > next && oldest > next) {
    bytes = frames::ofGap(m_past->epoch, next, entries.front().row - 1);
  } else if (entries.empty() && newest >= next) {  // they have gone, one and all
    bytes = frames::ofGap(m_past->epoch, next, newest);
    m_past->row = newest;
  }
  for (const Entry& entry : entries) {
    if (m_withAudit || entry.kind != "audit") bytes += frames::ofEntry(m_past->epoch, entry);
    m_past->row = entry.row;
  }
  joinHeld(entries.empty());
  return bytes;
}

/// Goes on with what is held, once the past leads there or has come to its end.
void Stream::Listener::joinHeld(bool hasReadAll) {
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  const ToldRing& ring = m_stream.m_ring;
  if (const auto place = ring.placeBehind(*m_past)) {
    m_place = *place;
  } else {
    const std::uint64_t first = ring.firstOf(m_past->epoch);
    const bool isHeld = first != ring.end();
    // What is missing between the two has been kept meanwhile.
    if (!hasReadAll || (isHeld && ring.at(first).id.row > m_past->row + 1)) return;
    m_place = isHeld ? first : ring.begin();
    m_pastEnd = m_past;
  }
  m_past.reset();
}

std::string Stream::Listener::takeHeld() {
  const std::lock_guard<std::mutex> lock(m_stream.m_mutex);
  if (m_isClosed) return {};
  const ToldRing& ring = m_stream.m_ring;
  std::string bytes;
  if (m_place < ring.begin()) {  // slower than what comes, on its way here
    m_isClosed = true;
    return {};
  }
  for (; m_place != ring.end() && bytes.size() < m_stream.m_settings.largestPart; ++m_place) {
    const ToldRing::Item& item = ring.at(m_place);
    if (m_pastEnd && item.id.epoch == m_pastEnd->epoch && item.id.row <= m_pastEnd->row) continue;
    if (m_withAudit || !item.isAudit) bytes += item.frame;
  }
  if (m_place != ring.end()) return bytes;
  m_isThere = true;
  if (std::exchange(m_positions, m_stream.m_positions) != m_stream.m_positions) bytes += m_stream.m_position;
  if (m_stream.m_isStopped) {
    bytes += frames::ofEnd();
    m_isClosed = true;
  }
  return bytes;
}

}  // namespace insight
