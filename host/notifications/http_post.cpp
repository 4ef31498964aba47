#include "notifications/http_post.h"

#include <boost/algorithm/string/predicate.hpp>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/asio/post.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <thread>
#include <utility>

namespace host {

namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using asio::ip::tcp;

constexpr unsigned kLastInterim = 199;
constexpr unsigned kSwitching = 101;

bool isInterim(unsigned status) { return status <= kLastInterim && status != kSwitching; }

[[noreturn]] void fail(const std::string& doing, const boost::system::error_code& error) {
  const bool isLate = error == asio::error::timed_out;
  throw HttpPost::Failure(doing + ": " + (isLate ? "it took too long" : error.message()));
}

}  // namespace

HttpPost::HttpPost(const WebhookUrl& url, IPostEncryption* encryption, std::chrono::milliseconds patience)
    : m_url(url),
      m_end(Clock::now() + patience),
      m_io(std::make_shared<asio::io_context>()),
      m_stream(url.isEncrypted ? encryption->makeStream(*m_io, url.host) : makeClearPostStream(*m_io)) {}

/// Waits for what `start` begins with a handler. What is late may still call it at a later step.
template <class Start>
HttpPost::Step HttpPost::await(Clock::time_point end, const Start& start) {
  const auto result = std::make_shared<std::optional<Step>>();
  m_io->restart();
  start([result](const ErrorCode& error, std::size_t count) { *result = Step{error, count}; });
  if (m_isStopped) return {asio::error::operation_aborted};
  while (!*result && Clock::now() < end && m_io->run_one_until(end) != 0) {
  }
  if (*result) return **result;
  return {m_isStopped ? asio::error::operation_aborted : asio::error::timed_out};
}

void HttpPost::stop() {
  m_isStopped = true;
  m_io->stop();
}

unsigned HttpPost::exchange(const std::string& request) {
  connect();
  open();
  write(request);
  return readStatus();
}

HttpPost::Endpoints HttpPost::endpoints() {
  if (boost::algorithm::iequals(m_url.host, "localhost")) {
    return {{asio::ip::address_v4::loopback(), m_url.port}, {asio::ip::address_v6::loopback(), m_url.port}};
  }
  ErrorCode error;
  const auto address = asio::ip::make_address(m_url.host, error);
  return error ? lookedUp() : Endpoints{{address, m_url.port}};
}

/// On a thread that is left behind where the system does not answer in time: it cannot be told to end.
HttpPost::Endpoints HttpPost::lookedUp() {
  const auto found = std::make_shared<Endpoints>();
  const Step step = await(m_end, [&](auto onDone) {
    std::thread([io = m_io, found, onDone, host = m_url.host, port = m_url.port] {
      const auto work = asio::make_work_guard(*io);
      asio::io_context own;
      ErrorCode error;
      const auto results =
          tcp::resolver(own).resolve(host, std::to_string(port), tcp::resolver::numeric_service, error);
      Endpoints endpoints(results.begin(), results.end());
      asio::post(*io, [found, onDone, error, endpoints = std::move(endpoints)]() mutable {
        *found = std::move(endpoints);
        onDone(error, 0);
      });
    }).detach();
  });
  if (step.error) fail("its name cannot be looked up", step.error);
  return *found;
}

/// Each of the host's addresses has its part of the time.
void HttpPost::connect() {
  const Endpoints all = endpoints();
  ErrorCode error = asio::error::host_not_found;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Clock::time_point now = Clock::now();
    const Clock::time_point end = now + (m_end - now) / static_cast<int>(all.size() - i);
    tcp::socket& socket = m_stream->socket();
    ErrorCode ignored;
    socket.close(ignored);
    error = await(end, [&](auto onDone) {
              socket.async_connect(all[i], [onDone](const ErrorCode& failure) { onDone(failure, 0); });
            }).error;
    if (!error) return;
  }
  fail("it cannot be reached", error);
}

void HttpPost::open() {
  const Step step = await(m_end, [&](auto onDone) { m_stream->open(onDone); });
  if (step.error == asio::error::timed_out) fail("TLS", step.error);
  if (step.error) throw Failure("TLS: " + m_stream->whyNotOpened(step.error));
}

void HttpPost::write(const std::string& request) {
  const Step step = await(m_end, [&](auto onDone) { m_stream->write(asio::buffer(request), onDone); });
  if (step.error) fail("it does not take the request", step.error);
}

unsigned HttpPost::readStatus() {
  m_answer.resize(kMostRead);
  std::size_t unread = 0;  // where the bytes begin that the parser has not taken
  std::size_t end = 0;
  auto parser = std::make_unique<http::response_parser<http::string_body>>();
  for (;;) {
    ErrorCode error;
    unread += parser->put(asio::buffer(m_answer.data() + unread, end - unread), error);
    if (error && error != http::error::need_more) fail("its answer is not HTTP", error);
    if (parser->is_header_done()) {
      const unsigned status = parser->get().result_int();
      if (!isInterim(status)) return status;
      parser = std::make_unique<http::response_parser<http::string_body>>();
      continue;
    }
    if (end == m_answer.size()) throw Failure("the header of its answer is larger than 4 KiB");
    const Step step = await(m_end, [&](auto onDone) {
      m_stream->readSome(asio::buffer(m_answer.data() + end, m_answer.size() - end), onDone);
    });
    if (step.error) fail("it gives no answer", step.error);
    end += step.count;
  }
}

}  // namespace host
