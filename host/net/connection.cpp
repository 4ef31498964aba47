#include "net/connection.h"

#include <boost/asio/dispatch.hpp>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/bind_handler.hpp>
#include <boost/beast/http/error.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "system/report.h"

namespace host {

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;

constexpr std::size_t kReadBytes = 4096;
constexpr std::chrono::seconds kCloseTime{2};
constexpr char kContinue[] = "HTTP/1.1 100 Continue\r\n\r\n";

/// The refusal that tells the client what is wrong with its message, or nothing when there is no one to tell.
std::optional<Refusal> refusalOf(const beast::error_code& error) {
  if (error == http::error::end_of_stream || error == http::error::partial_message) return {};
  if (error == http::error::header_limit || error == http::error::buffer_overflow) {
    return Refusal(431, "The header is too large");
  }
  if (error == http::error::body_limit) return Refusal(413, "The body is too large");
  if (error.category() != make_error_code(http::error::end_of_stream).category()) return {};
  return Refusal(400, "The request is not valid HTTP: " + error.message());
}

/// Nothing may leave a worker's task.
Answer answerOf(const Job& job, const std::string& body) {
  try {
    return job.run(body);
  } catch (const std::exception& failure) {
    return failureAnswer(failure);
  } catch (...) {
    return failureAnswer(std::runtime_error("The plug-in failed without a reason"));
  }
}

}  // namespace

Connection::Connection(asio::ip::tcp::socket socket, SharedState& state)
    : m_state(state), m_stream(std::move(socket)), m_buffer(state.limits.headerBytes + kReadBytes) {}

Connection::~Connection() { m_state.connections.remove(this); }

void Connection::start() {
  asio::dispatch(m_stream.get_executor(),
                 beast::bind_front_handler(&Connection::awaitRequest, shared_from_this()));
}

void Connection::stop() {
  asio::post(m_stream.get_executor(), [self = shared_from_this()] {
    self->m_isStopping = true;
    if (self->m_isIdle) self->m_stream.close();
  });
}

void Connection::awaitRequest() {
  m_parser.emplace();
  m_parser->header_limit(static_cast<std::uint32_t>(m_state.limits.headerBytes));
  m_parser->body_limit(m_state.limits.bodyBytes);
  if (m_buffer.size() != 0) return readHeader();  // the client did not wait for the answer
  m_isIdle = true;
  m_stream.expires_after(m_state.limits.idleTime);
  m_stream.async_read_some(m_buffer.prepare(kReadBytes),
                           [self = shared_from_this()](ErrorCode error, std::size_t count) {
                             self->m_isIdle = false;
                             if (error) return;
                             self->m_buffer.commit(count);
                             self->readHeader();
                           });
}

void Connection::readHeader() {
  m_stream.expires_after(m_state.limits.headerTime);
  http::async_read_header(
      m_stream, m_buffer, *m_parser,
      [self = shared_from_this()](ErrorCode error, std::size_t) { self->onHeader(error); });
}

void Connection::onHeader(ErrorCode error) {
  if (error) return onReadFailure(error);
  try {
    m_job = m_state.service.prepare(head());
  } catch (const std::exception& failure) {
    return refuse(failure);
  }
  if (m_parser->is_done()) return run();
  if (beast::iequals(m_parser->get()[http::field::expect], "100-continue")) return sendContinue();
  readBody();
}

void Connection::onReadFailure(ErrorCode error) {
  if (const auto refusal = refusalOf(error)) refuse(*refusal);
}

void Connection::sendContinue() {
  m_stream.expires_after(m_state.limits.writeTime);
  asio::async_write(m_stream, asio::buffer(kContinue, sizeof(kContinue) - 1),
                    [self = shared_from_this()](ErrorCode error, std::size_t) {
                      if (!error) self->readBody();
                    });
}

void Connection::readBody() {
  m_stream.expires_after(m_state.limits.bodyTime);
  http::async_read(m_stream, m_buffer, *m_parser,
                   [self = shared_from_this()](ErrorCode error, std::size_t) { self->onBody(error); });
}

void Connection::onBody(ErrorCode error) { error ? onReadFailure(error) : run(); }

void Connection::run() {
  m_stream.expires_never();
  // The guard keeps the I/O threads until the answer is handed to them.
  auto task = [self = shared_from_this(), guard = asio::make_work_guard(m_stream.get_executor())] {
    Answer answer = answerOf(self->m_job, self->m_parser->get().body());
    asio::post(self->m_stream.get_executor(),
               [self, answer = std::move(answer)]() mutable { self->send(std::move(answer)); });
  };
  if (m_state.workers.submit(std::move(task))) return;
  refuse(Refusal(503, "Too many requests wait to be served", {{"Retry-After", "1"}}));
}

void Connection::refuse(const std::exception& failure) { send(failureAnswer(failure)); }

void Connection::send(Answer answer) {
  log(answer.status);
  m_job = {};
  m_response.emplace(responseOf(std::move(answer)));
  m_stream.expires_after(m_state.limits.writeTime);
  http::async_write(m_stream, *m_response,
                    [self = shared_from_this()](ErrorCode error, std::size_t) { self->onSent(error); });
}

Connection::Response Connection::responseOf(Answer answer) const {
  const auto& request = m_parser->get();
  Response response(http::int_to_status(answer.status), request.version() == 10 ? 10 : 11);
  response.set(http::field::cache_control, "no-store");
  response.set("X-Content-Type-Options", "nosniff");
  for (const auto& [name, value] : answer.headers) response.set(name, value);
  // A request that was not read to its end leaves the connection at an unknown place.
  response.keep_alive(m_parser->is_done() && request.keep_alive() && !m_isStopping);
  if (answer.body.empty()) return response;
  response.set(http::field::content_type, answer.contentType);
  response.content_length(answer.body.size());
  if (request.method() != http::verb::head) response.body() = std::move(answer.body);
  return response;
}

void Connection::onSent(ErrorCode error) {
  if (error) return;
  if (m_response->keep_alive() && !m_isStopping) return awaitRequest();
  close();
}

/// Says that nothing more comes, and takes in what the client still sends: closing on unread bytes would make
/// the system drop an answer that the client has not read yet.
void Connection::close() {
  ErrorCode error;
  m_stream.socket().shutdown(asio::ip::tcp::socket::shutdown_send, error);
  m_stream.expires_after(kCloseTime);
  awaitEnd();
}

void Connection::awaitEnd() {
  m_buffer.clear();
  m_stream.async_read_some(m_buffer.prepare(kReadBytes),
                           [self = shared_from_this()](ErrorCode error, std::size_t) {
                             if (!error) self->awaitEnd();
                           });
}

RequestHead Connection::head() const {
  const auto& request = m_parser->get();
  return {std::string(request.method_string()),
          std::string(request.target()),
          std::string(request[http::field::authorization]),
          std::string(request[http::field::content_type]),
          !m_parser->is_done(),
          {}};
}

/// Without the query, which may hold the token.
void Connection::log(unsigned status) const {
  if (!m_state.logRequests) return;
  const auto& request = m_parser->get();
  const std::string target(request.target());
  report(std::string(request.method_string()) + ' ' + target.substr(0, target.find('?')) + ' ' +
         std::to_string(status));
}

}  // namespace host
