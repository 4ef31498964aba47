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
  std::string header(textOf(input).substr(m_scan.start(), *end - m_scan.start()));
  // A later minor version means what the last known one means.
  char& minorVersion = header[m_scan.minorVersionAt() - m_scan.start()];
  minorVersion = std::min(minorVersion, '1');
  input.consume(*end);
  beast::error_code error;
  m_parser.put(boost::asio::buffer(header), error);
  if (error) refuse(error);
  m_request = judgedRequest(m_parser.get().base(), m_names, m_destination);
  m_request.hasBody = !m_parser.is_done();
  m_isWhole = m_parser.is_done();
  m_parser.eager(true);
  return true;
}

bool RequestReader::readBody(beast::flat_buffer& input) {
  constexpr std::size_t kLastChunk = 5;  // "0", and two line ends: the parser asserts on a part of them
  if (m_parser.chunked() && input.size() < kLastChunk) return false;
  beast::error_code error;
  if (input.size() != 0) input.consume(m_parser.put(input.data(), error));
  if (error && error != http::error::need_more) refuse(error);
  // What is left is a line of a chunk or its trailers.
  if (!m_parser.is_done() && input.size() > m_limits.headerLineBytes) {
    throw Refusal(400, "The request is not valid HTTP: a line between its chunks is too long");
  }
  m_isWhole = m_parser.is_done();
  return m_isWhole;
}

std::string RequestReader::takeBody() { return std::exchange(m_parser.get().body(), {}); }

}  // namespace host
