#include "http/request_reader.h"

#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/beast/http/error.hpp>
#include <cstdint>
#include <limits>
#include <utility>

#include "answers/answer.h"
#include "http/request_rules.h"

namespace host {

namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;

std::string_view textOf(const beast::flat_buffer& input) {
  return {static_cast<const char*>(input.data().data()), input.size()};
}

[[noreturn]] void refuse(const beast::error_code& error) {
  if (error == http::error::body_limit) throw Refusal(413, "The body is too large");
  throw Refusal(400, "The request is not valid HTTP: " + error.message());
}

}  // namespace

RequestReader::RequestReader(const Limits& limits, const HostNames& names, const Destination& destination)
    : m_limits(limits), m_names(names), m_destination(destination), m_scan(limits) {
  m_parser.header_limit(std::numeric_limits<std::uint32_t>::max());  // the scan has one of its own
  m_parser.body_limit(limits.bodyBytes);
}

bool RequestReader::readHeader(beast::flat_buffer& input) {
  const auto end = m_scan.end(textOf(input));
  if (!end) return false;
  // A later minor version means what the last known one means.
  char& minorVersion = static_cast<char*>(input.data().data())[m_scan.minorVersionAt()];
  minorVersion = std::min(minorVersion, '1');
  input.consume(m_scan.start());
  const std::size_t size = *end - m_scan.start();
  beast::error_code error;
  m_parser.put(boost::asio::buffer(input.data(), size), error);
  input.consume(size);
  if (error) refuse(error);
  m_request = judgedRequest(m_parser.get().base(), m_names, m_destination);
  m_request.hasBody = !m_parser.is_done();
  m_isWhole = m_parser.is_done();
  m_parser.eager(true);
  return true;
}

/// No more at a time than a line between chunks may have, and one byte: what is refused may not hang on how
/// the bytes were cut on their way.
bool RequestReader::readBody(beast::flat_buffer& input) {
  constexpr std::size_t kLastChunk = 5;  // "0", and two line ends: the parser asserts on a part of them
  const std::size_t most = m_limits.headerLineBytes + 1;
  while (!m_parser.is_done() && input.size() >= (m_parser.chunked() ? kLastChunk : 1)) {
    const std::size_t given = std::min(input.size(), most);
    beast::error_code error;
    const std::size_t taken = m_parser.put(boost::asio::buffer(input.data(), given), error);
    input.consume(taken);
    if (error && error != http::error::need_more) refuse(error);
    if (taken != 0) continue;
    // What is left is a line of a chunk or its trailers.
    if (given == most)
      throw Refusal(400, "The request is not valid HTTP: a line between its chunks is too long");
    break;
  }
  m_isWhole = m_parser.is_done();
  return m_isWhole;
}

std::string RequestReader::takeBody() { return std::exchange(m_parser.get().body(), {}); }

}  // namespace host
