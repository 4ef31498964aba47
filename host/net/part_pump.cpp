#include "net/part_pump.h"

#include <atomic>
#include <boost/asio/executor_work_guard.hpp>
#include <stdexcept>
#include <utility>

#include "http/chunk.h"
#include "system/report.h"

namespace host {

using Next = AnswerPart::Next;

/// Tells when to fetch. It holds nothing of the source: who rings may have taken what the source's end takes.
class PartPump::Bell {
 public:
  Bell(Lanes& lanes, const boost::asio::any_io_executor& executor) : m_lanes(lanes), m_executor(executor) {}

  /// Comes ahead of all else.
  void attach(std::weak_ptr<PartPump> pump) { m_pump = std::move(pump); }

  /// Fetches, now or as soon as the part under way is out.
  void ring() {
    State state = m_state;
    for (;;) {
      if (state == State::kBusyAndRung) return;
      const State next = state == State::kResting ? State::kBusy : State::kBusyAndRung;
      if (m_state.compare_exchange_weak(state, next)) break;
    }
    if (state == State::kResting) submit();
  }

  /// The part under way is out, and another one is there.
  void goOn() {
    m_state = State::kBusy;
    submit();
  }

  /// The part under way is out, and there was no other one.
  void rest() {
    State state = State::kBusy;
    if (!m_state.compare_exchange_strong(state, State::kResting)) goOn();
  }

 private:
  enum class State { kResting, kBusy, kBusyAndRung };

  void submit() {
    m_lanes.submit(Lane::kParts, {}, [pump = m_pump, guard = boost::asio::make_work_guard(m_executor)] {
      if (const auto open = pump.lock()) open->fetch();
    });
  }

  Lanes& m_lanes;
  const boost::asio::any_io_executor m_executor;
  std::weak_ptr<PartPump> m_pump;
  std::atomic<State> m_state{State::kResting};
};

PartPump::PartPump(Lanes& lanes, const boost::asio::any_io_executor& executor, bool isChunked, OpenParts open,
                   Deliver deliver)
    : m_isChunked(isChunked),
      m_deliver(std::move(deliver)),
      m_bell(std::make_shared<Bell>(lanes, executor)),
      m_open(std::move(open)) {}

PartPump::~PartPump() = default;

void PartPump::start() {
  m_bell->attach(weak_from_this());
  m_bell->ring();
}

void PartPump::ask() { m_bell->ring(); }

void PartPump::written(Next next) { next == Next::kAtOnce ? m_bell->goOn() : m_bell->rest(); }

/// What brings nothing is no business of the connection's.
void PartPump::fetch() {
  Fetched part = fetched();
  if (part.head || !part.bytes.empty() || part.next == Next::kNone) return m_deliver(std::move(part));
  written(part.next);
}

/// Nothing may leave a worker's task.
PartPump::Fetched PartPump::fetched() {
  Fetched made;
  const bool isBegun = !m_open;
  try {
    if (!isBegun) made.head = open();
    take(made);
    return made;
  } catch (const std::exception& failure) {
    return failed(isBegun, failure);
  } catch (...) {
    return failed(isBegun, std::runtime_error("it failed without a reason"));
  }
}

void PartPump::take(Fetched& made) {
  AnswerPart part = m_source->take();
  made.next = part.next;
  made.bytes = m_isChunked ? chunkOf(part.bytes) : std::move(part.bytes);
  if (part.next != Next::kNone) return;
  m_source.reset();
  if (m_isChunked) made.bytes += kLastChunk;
}

std::shared_ptr<const Answer> PartPump::open() {
  const OpenParts open = std::exchange(m_open, nullptr);
  OpenAnswer opened = open([bell = m_bell] { bell->ring(); });
  m_source = std::move(opened.source);
  opened.head.isInParts = true;
  return std::make_shared<const Answer>(std::move(opened.head));
}

/// A client that has the head already cannot be told. A refusal is no fault of ours.
PartPump::Fetched PartPump::failed(bool isBegun, const std::exception& failure) {
  m_source.reset();
  Fetched made;
  made.next = Next::kNone;
  made.isBroken = isBegun;
  if (!isBegun) {
    made.head = std::make_shared<const Answer>(failureAnswer(failure));
  } else if (dynamic_cast<const Refusal*>(&failure) == nullptr) {
    report(std::string("an answer broke off: ") + failure.what());
  }
  return made;
}

}  // namespace host
