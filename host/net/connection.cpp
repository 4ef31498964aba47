#include "net/connection.h"

#include <algorithm>
#include <boost/asio/dispatch.hpp>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/post.hpp>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "http/response_head.h"
#include "system/log.h"
#include "system/memory.h"

namespace host {

namespace {

namespace asio = boost::asio;

constexpr std::size_t kHeaderReadBytes = 4096;
constexpr std::size_t kBodyReadBytes = 16384;
constexpr std::chrono::seconds kCloseTime{2};
constexpr std::chrono::milliseconds kTick{750};  // what is to be known within a second is known in time
constexpr char kContinue[] = "HTTP/1.1 100 Continue\r\n\r\n";
constexpr char kHead[] = "HEAD";
constexpr unsigned kVersion = 11;
constexpr unsigned kOldVersion = 10;

/// What may wait to be read: a header, or a line between the chunks of a body, and what one read brings.
std::size_t inputBytes(const Limits& limits) {
  return std::max(limits.headerBytes, limits.headerLineBytes) + kBodyReadBytes;
}

/// The same for all, so that a loop that has many is woken once for all of them.
std::chrono::steady_clock::time_point nextTick() {
  using Clock = std::chrono::steady_clock;
  return Clock::time_point((Clock::now().time_since_epoch() / kTick + 1) * kTick);
}

}  // namespace

Connection::Connection(std::unique_ptr<ClientStream> stream, SharedState& state)
    : m_state(state),
      m_stream(std::move(stream)),
      m_input(inputBytes(state.limits)),
      m_delay(m_stream->executor()),
      m_parking(m_stream->executor()) {}

Connection::~Connection() { m_state.connections.remove(this); }

void Connection::start() {
  m_deadline.emplace(m_stream->executor(), [weak = weak_from_this()] {
    if (const auto self = weak.lock()) self->leave();
  });
  asio::dispatch(m_stream->executor(), [self = shared_from_this()] {
    self->m_deadline->setAfter(self->m_state.limits.headerTime);
    self->m_stream->open([self](ErrorCode error) {
      if (!error) self->awaitRequest();
    });
  });
}

void Connection::turnAway() {
  const Answer answer = failureAnswer(Refusal(503, "Too many clients are connected"));
  m_stream->turnAway(responseHead(answer, kVersion, false) + answer.body.text());
}

void Connection::giveUp() {
  asio::post(m_stream->executor(), [self = shared_from_this()] {
    self->m_isStopping = true;
    self->m_delay.cancel();
    self->endParking();
    self->endParts();
    if (self->m_isResting) self->quit();
  });
}

void Connection::stop() {
  asio::post(m_stream->executor(), [self = shared_from_this()] {
    self->m_isStopping = true;
    self->m_delay.cancel();
    self->endParking();
    self->endParts();
    if (self->m_isIdle) self->quit();
  });
}

void Connection::rest() {
  m_isResting = true;
  m_state.connections.rest(this);
}

void Connection::wake() {
  m_isResting = false;
  m_state.connections.wake(this);
}

/// A read may be under way already, begun to see a client leave.
void Connection::receive(std::size_t count, Step next) {
  m_next = next;
  if (std::exchange(m_isReading, true)) return;
  m_stream->readSome(m_input.prepare(count),
                     [self = shared_from_this()](ErrorCode error, std::size_t received) {
                       self->onReceived(error, received);
                     });
}

void Connection::onReceived(ErrorCode error, std::size_t received) {
  m_isReading = false;
  m_isIdle = false;
  if (error) return leave();
  m_input.commit(received);
  if (const Step next = std::exchange(m_next, nullptr)) (this->*next)();
}

/// A client that leaves, or lets its time pass, is told nothing.
void Connection::leave() {
  m_hasLeft = true;
  m_parking.cancel();
  m_onParkingEnd = nullptr;
  m_pump.reset();
  m_stream->close();
}

/// Of no fault of the client's.
void Connection::quit() {
  m_stream->quit([self = shared_from_this()](ErrorCode) {});
}

/// What comes meanwhile is the next request; who has sent one is not seen to leave.
void Connection::watchClient() {
  if (m_isReading || m_input.size() != 0) return;
  m_deadline->setNever();
  receive(kHeaderReadBytes, nullptr);
}

void Connection::awaitRequest() {
  m_reader.emplace(m_state.limits, m_state.names, m_stream->destination());
  rest();
  ++m_pipelined;
  if (m_input.size() != 0) return beginRequest();  // the client did not wait for the answer
  if (m_isStopping) return quit();                 // told so ahead of its first wait
  m_pipelined = 1;
  if (!m_isReading && m_input.capacity() > kHeaderReadBytes) m_input.shrink_to_fit();
  m_isIdle = true;
  m_deadline->setAfter(m_state.limits.idleTime);
  receive(kHeaderReadBytes, &Connection::beginRequest);
}

void Connection::beginRequest() {
  m_begun = std::chrono::steady_clock::now();
  takeHeader();
}

void Connection::takeHeader() {
  try {
    if (!m_reader->readHeader(m_input)) return awaitHeader();
    wake();
    m_state.service.prepare(head(), m_job);
  } catch (const std::exception& failure) {
    return refuse(failure);
  }
  if (m_reader->isWhole()) return run();
  if (m_reader->request().awaitsContinue && m_input.size() == 0) return sendContinue();
  m_deadline->setAfter(m_state.limits.bodyTime);
  takeBody();
}

void Connection::awaitHeader() {
  m_deadline->set(m_begun + m_state.limits.headerTime);
  receive(kHeaderReadBytes, &Connection::takeHeader);
}

void Connection::sendContinue() {
  m_deadline->setAfter(m_state.limits.writeTime);
  m_stream->write({asio::buffer(kContinue, sizeof(kContinue) - 1), {}},
                  [self = shared_from_this()](ErrorCode error) {
                    if (error) return;
                    self->m_deadline->setAfter(self->m_state.limits.bodyTime);
                    self->receive(kBodyReadBytes, &Connection::takeBody);
                  });
}

void Connection::takeBody() {
  try {
    if (!m_reader->readBody(m_input)) return receive(kBodyReadBytes, &Connection::takeBody);
  } catch (const std::exception& failure) {
    return refuse(failure);
  }
  run();
}

void Connection::run() {
  m_deadline->setNever();
  if (m_job.lane == Lane::kAtOnce) return conclude(outcomeOf(m_job, m_reader->takeBody()));
  if (!m_job.begin) return runOnLane();
  const auto begin = std::move(m_job.begin);  // the job may be over before it comes back
  try {
    begin(shared_from_this(), m_reader->takeBody());
  } catch (const std::exception& failure) {
    refuse(failure);
  }
}

void Connection::runOnLane() {
  // The guard keeps the I/O threads until the answer is handed to them.
  auto task = [self = shared_from_this(), body = m_reader->takeBody(),
               guard = asio::make_work_guard(m_stream->executor())] {
    Outcome outcome = outcomeOf(self->m_job, body);
    if (body.size() + outcome.answer->body.size() >= kLargeBytes) giveMemoryBack();
    asio::post(self->m_stream->executor(),
               [self, outcome = std::move(outcome)]() mutable { self->conclude(std::move(outcome)); });
  };
  if (m_state.lanes.submit(m_job.lane, m_job.identity, std::move(task))) return;
  refuse(Refusal(503, "Too many requests wait to be served", {{"Retry-After", "1"}}));
}

void Connection::post(Exchange::Step step) { asio::post(m_stream->executor(), std::move(step)); }

bool Connection::work(Lane lane, Exchange::Step task) {
  // The guard keeps the I/O threads until the task has handed on what it made.
  return m_state.lanes.submit(lane, m_job.identity,
                              [self = shared_from_this(), task = std::move(task),
                               guard = asio::make_work_guard(m_stream->executor())] { task(); });
}

void Connection::park(std::chrono::milliseconds time, Exchange::Step onEnd) {
  if (m_hasLeft) return;
  m_onParkingEnd = std::move(onEnd);
  watchClient();
  m_parking.expires_after(time);
  m_parking.async_wait([self = shared_from_this()](ErrorCode error) {
    if (!error) self->endParking();
  });
}

void Connection::endParking() {
  m_parking.cancel();
  if (const auto onEnd = std::exchange(m_onParkingEnd, nullptr)) onEnd();
}

void Connection::answer(std::shared_ptr<const Answer> answer) {
  m_parking.cancel();
  m_onParkingEnd = nullptr;
  if (!m_hasLeft) send(std::move(answer));
}

Connection::Outcome Connection::outcomeOf(const std::exception& failure) {
  Outcome outcome{std::make_shared<const Answer>(failureAnswer(failure))};
  if (const auto* const refusal = dynamic_cast<const Refusal*>(&failure)) outcome.wait = refusal->wait;
  return outcome;
}

/// Nothing may leave a worker's task.
Connection::Outcome Connection::outcomeOf(const Job& job, const std::string& body) {
  try {
    return {std::make_shared<const Answer>(job.run(body))};
  } catch (const std::exception& failure) {
    return outcomeOf(failure);
  } catch (...) {
    return outcomeOf(std::runtime_error("The plug-in failed without a reason"));
  }
}

void Connection::refuse(const std::exception& failure) { conclude(outcomeOf(failure)); }

void Connection::conclude(Outcome outcome) {
  if (outcome.wait.count() <= 0 || m_isStopping) return send(std::move(outcome.answer));
  m_deadline->setNever();
  rest();
  m_delay.expires_after(outcome.wait);
  m_delay.async_wait([self = shared_from_this(), answer = std::move(outcome.answer)](ErrorCode) mutable {
    self->wake();
    self->send(std::move(answer));
  });
}

void Connection::send(std::shared_ptr<const Answer> answer) {
  beginAnswer(std::move(answer));
  ClientStream::Buffers buffers{asio::buffer(m_answerHead), {}};
  if (m_reader->request().method != kHead) buffers[1] = asio::buffer(m_answer->body.text());
  m_deadline->setAfter(m_state.limits.writeTime);
  m_stream->write(buffers, [self = shared_from_this()](ErrorCode error) {
    if (!error) self->onSent();
  });
}

void Connection::beginAnswer(std::shared_ptr<const Answer> answer) {
  m_answer = std::move(answer);
  account();
  m_job = {};
  const Request& request = m_reader->request();
  // A request that was not read to its end leaves the connection at an unknown place.
  const bool isTooFarAhead = m_pipelined >= m_state.limits.pipelinedRequests && m_input.size() != 0;
  const bool isStopping = m_isStopping || m_state.connections.isStopped();
  const bool endsByClosing = m_answer->isInParts && request.version == kOldVersion;
  m_keepsConnection =
      m_reader->isWhole() && request.keepsConnection && !isTooFarAhead && !isStopping && !endsByClosing;
  m_answerHead = responseHead(*m_answer, request.version, m_keepsConnection);
}

void Connection::onSent() {
  m_answer.reset();
  if (m_keepsConnection && !m_isStopping) return awaitRequest();
  close();
}

void Connection::answerInParts(OpenParts open) {
  if (m_hasLeft) return;
  auto deliver = [weak = weak_from_this(), executor = m_stream->executor()](PartPump::Fetched part) {
    asio::post(executor, [weak, part = std::move(part)]() mutable {
      if (const auto self = weak.lock()) self->sendPart(std::move(part));
    });
  };
  m_pump = std::make_shared<PartPump>(m_state.lanes, m_stream->executor(),
                                      m_reader->request().version != kOldVersion, std::move(open),
                                      std::move(deliver));
  watchClient();
  m_pump->start();
  tick();
  if (m_isStopping) endParts();
}

void Connection::sendPart(PartPump::Fetched part) {
  if (!m_pump) return;
  if (part.isBroken) return leave();
  if (part.head && (!part.head->isInParts || m_reader->request().method == kHead)) {
    m_pump.reset();
    return answer(part.head);
  }
  if (part.head) beginAnswer(part.head);
  m_part = std::move(part);
  if (!m_isStopping) m_deadline->setAfter(m_state.limits.writeTime);
  m_stream->write({asio::buffer(m_answerHead), asio::buffer(m_part.bytes)},
                  [self = shared_from_this()](ErrorCode error) {
                    if (error) return self->leave();
                    self->onPartSent();
                  });
}

void Connection::onPartSent() {
  m_answerHead.clear();
  const AnswerPart::Next next = std::exchange(m_part, {}).next;
  if (!m_pump) return;
  if (next == AnswerPart::Next::kNone) {
    m_pump.reset();
    m_parking.cancel();
    return onSent();
  }
  if (!m_isStopping) m_deadline->setNever();
  m_pump->written(next);
}

/// While parts come, and keeps the connection for them.
void Connection::tick() {
  m_parking.expires_at(nextTick());
  m_parking.async_wait([self = shared_from_this()](ErrorCode error) {
    if (error || !self->m_pump) return;
    self->m_pump->ask();
    self->tick();
  });
}

/// Whatever lasts has been told by now that it is to end. It gets a moment to say so.
void Connection::endParts() {
  if (!m_pump) return;
  m_deadline->setAfter(kCloseTime);
  m_pump->ask();
}

/// Says that nothing more comes, and takes in what the client still sends: closing on unread bytes would make
/// the system drop an answer that the client has not read yet.
void Connection::close() {
  rest();
  m_deadline->setAfter(kCloseTime);
  m_stream->finish([self = shared_from_this()](ErrorCode) { self->awaitEnd(); });
}

void Connection::awaitEnd() {
  m_input.clear();
  receive(kHeaderReadBytes, &Connection::awaitEnd);
}

/// For whoever answers, HEAD is GET: the body is left out here.
RequestHead Connection::head() {
  const Request& request = m_reader->request();
  return {request.method == kHead ? "GET" : request.method,
          request.target,
          m_reader->takeAuthorization(),
          request.contentType,
          request.hasBody,
          m_stream->client(),
          m_reader->takeWishes(),
          &m_proven};
}

void Connection::account() const {
  const auto duration =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - m_begun);
  if (m_state.counts != nullptr) m_state.counts->count(m_job.operation, m_answer->status, duration);
  if (m_state.logRequests) log(duration);
}

void Connection::log(std::chrono::microseconds duration) const {
  const Request& request = m_reader->request();
  RequestRecord record;
  record.client = m_stream->client().address;
  record.identity = m_job.identity;
  record.operation = m_job.operation;
  record.method = request.method;
  record.target = request.target;
  record.status = m_answer->status;
  record.bytes = request.method == kHead ? 0 : m_answer->body.size();
  record.duration = duration;
  logRequest(record);
}

}  // namespace host
