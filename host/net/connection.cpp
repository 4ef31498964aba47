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
constexpr char kContinue[] = "HTTP/1.1 100 Continue\r\n\r\n";
constexpr std::size_t kLargeBytes = 262144;  // of text, whose values took several times as much
constexpr char kHead[] = "HEAD";
constexpr unsigned kVersion = 11;

/// What may wait to be read: a header, or a line between the chunks of a body, and what one read brings.
std::size_t inputBytes(const Limits& limits) {
  return std::max(limits.headerBytes, limits.headerLineBytes) + kBodyReadBytes;
}

}  // namespace

Connection::Connection(std::unique_ptr<ClientStream> stream, SharedState& state)
    : m_state(state),
      m_stream(std::move(stream)),
      m_input(inputBytes(state.limits)),
      m_delay(m_stream->executor()) {}

Connection::~Connection() { m_state.connections.remove(this); }

void Connection::start() {
  asio::dispatch(m_stream->executor(), [self = shared_from_this()] {
    self->m_stream->expireAfter(self->m_state.limits.headerTime);
    self->m_stream->open([self](ErrorCode error) {
      if (!error) self->awaitRequest();
    });
  });
}

void Connection::turnAway() {
  const Answer answer = failureAnswer(Refusal(503, "Too many clients are connected"));
  m_stream->turnAway(responseHead(answer, kVersion, false) + answer.body);
}

void Connection::giveUp() {
  asio::post(m_stream->executor(), [self = shared_from_this()] {
    self->m_isStopping = true;
    self->m_delay.cancel();
    if (self->m_isResting) self->m_stream->close();
  });
}

void Connection::stop() {
  asio::post(m_stream->executor(), [self = shared_from_this()] {
    self->m_isStopping = true;
    self->m_delay.cancel();
    if (self->m_isIdle) self->m_stream->close();
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

/// A client that leaves, or lets its time pass, is told nothing.
void Connection::receive(std::size_t count, Step next) {
  m_stream->readSome(m_input.prepare(count),
                     [self = shared_from_this(), next](ErrorCode error, std::size_t received) {
                       self->m_isIdle = false;
                       if (error) return;
                       self->m_input.commit(received);
                       (self.get()->*next)();
                     });
}

void Connection::awaitRequest() {
  m_reader.emplace(m_state.limits, m_state.names, m_stream->destination());
  rest();
  ++m_pipelined;
  if (m_input.size() != 0) return beginRequest();  // the client did not wait for the answer
  m_pipelined = 1;
  if (m_input.capacity() > kHeaderReadBytes) m_input.shrink_to_fit();
  m_isIdle = true;
  m_stream->expireAfter(m_state.limits.idleTime);
  receive(kHeaderReadBytes, &Connection::beginRequest);
}

void Connection::beginRequest() {
  m_begun = std::chrono::steady_clock::now();
  m_stream->expireAfter(m_state.limits.headerTime);
  takeHeader();
}

void Connection::takeHeader() {
  try {
    if (!m_reader->readHeader(m_input)) return receive(kHeaderReadBytes, &Connection::takeHeader);
    wake();
    m_job = m_state.service.prepare(head());
  } catch (const std::exception& failure) {
    return refuse(failure);
  }
  if (m_reader->isWhole()) return run();
  if (m_reader->request().awaitsContinue && m_input.size() == 0) return sendContinue();
  m_stream->expireAfter(m_state.limits.bodyTime);
  takeBody();
}

void Connection::sendContinue() {
  m_stream->expireAfter(m_state.limits.writeTime);
  m_stream->write({asio::buffer(kContinue, sizeof(kContinue) - 1)},
                  [self = shared_from_this()](ErrorCode error) {
                    if (error) return;
                    self->m_stream->expireAfter(self->m_state.limits.bodyTime);
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
  m_stream->expireNever();
  // The guard keeps the I/O threads until the answer is handed to them.
  auto task = [self = shared_from_this(), body = m_reader->takeBody(),
               guard = asio::make_work_guard(m_stream->executor())] {
    Outcome outcome = outcomeOf(self->m_job, body);
    if (body.size() + outcome.answer.body.size() >= kLargeBytes) giveMemoryBack();
    asio::post(self->m_stream->executor(),
               [self, outcome = std::move(outcome)]() mutable { self->conclude(std::move(outcome)); });
  };
  if (m_state.lanes.submit(m_job.lane, m_job.identity, std::move(task))) return;
  refuse(Refusal(503, "Too many requests wait to be served", {{"Retry-After", "1"}}));
}

Connection::Outcome Connection::outcomeOf(const std::exception& failure) {
  Outcome outcome{failureAnswer(failure)};
  if (const auto* const refusal = dynamic_cast<const Refusal*>(&failure)) outcome.wait = refusal->wait;
  return outcome;
}

/// Nothing may leave a worker's task.
Connection::Outcome Connection::outcomeOf(const Job& job, const std::string& body) {
  try {
    return {job.run(body)};
  } catch (const std::exception& failure) {
    return outcomeOf(failure);
  } catch (...) {
    return outcomeOf(std::runtime_error("The plug-in failed without a reason"));
  }
}

void Connection::refuse(const std::exception& failure) { conclude(outcomeOf(failure)); }

void Connection::conclude(Outcome outcome) {
  if (outcome.wait.count() <= 0 || m_isStopping) return send(std::move(outcome.answer));
  rest();
  m_delay.expires_after(outcome.wait);
  m_delay.async_wait([self = shared_from_this(), answer = std::move(outcome.answer)](ErrorCode) mutable {
    self->wake();
    self->send(std::move(answer));
  });
}

void Connection::send(Answer answer) {
  m_answer = std::move(answer);
  log();
  m_job = {};
  const Request& request = m_reader->request();
  // A request that was not read to its end leaves the connection at an unknown place.
  const bool isTooFarAhead = m_pipelined >= m_state.limits.pipelinedRequests && m_input.size() != 0;
  m_keepsConnection = m_reader->isWhole() && request.keepsConnection && !isTooFarAhead && !m_isStopping;
  m_answerHead = responseHead(m_answer, request.version, m_keepsConnection);
  std::vector<asio::const_buffer> buffers{asio::buffer(m_answerHead)};
  if (request.method != kHead) buffers.push_back(asio::buffer(m_answer.body));
  m_stream->expireAfter(m_state.limits.writeTime);
  m_stream->write(buffers, [self = shared_from_this()](ErrorCode error) {
    if (!error) self->onSent();
  });
}

void Connection::onSent() {
  m_answer = {};
  m_answerHead = {};
  if (m_keepsConnection && !m_isStopping) return awaitRequest();
  close();
}

/// Says that nothing more comes, and takes in what the client still sends: closing on unread bytes would make
/// the system drop an answer that the client has not read yet.
void Connection::close() {
  rest();
  m_stream->expireAfter(kCloseTime);
  m_stream->finish([self = shared_from_this()](ErrorCode) { self->awaitEnd(); });
}

void Connection::awaitEnd() {
  m_input.clear();
  receive(kHeaderReadBytes, &Connection::awaitEnd);
}

/// For whoever answers, HEAD is GET: the body is left out here.
RequestHead Connection::head() const {
  const Request& request = m_reader->request();
  return {request.method == kHead ? "GET" : request.method,
          request.target,
          request.authorization,
          request.contentType,
          request.hasBody,
          m_stream->client()};
}

void Connection::log() const {
  if (!m_state.logRequests) return;
  const Request& request = m_reader->request();
  RequestRecord record;
  record.client = m_stream->client().address;
  record.identity = m_job.identity;
  record.operation = m_job.operation;
  record.method = request.method;
  record.target = request.target;
  record.status = m_answer.status;
  record.bytes = request.method == kHead ? 0 : m_answer.body.size();
  record.duration =
      std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - m_begun);
  logRequest(record);
}

}  // namespace host
