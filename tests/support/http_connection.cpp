#include "support/http_connection.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/write.hpp>

#include "support/exchange_record.h"

namespace asio = boost::asio;
namespace http = boost::beast::http;

HttpConnection::HttpConnection(std::uint16_t port) : m_port(port), m_isRecorded(exchange_record::isWanted()) {
  m_socket.connect({asio::ip::address_v4::loopback(), port});
}

HttpConnection::Request HttpConnection::make(const std::string& method, const std::string& target,
                                             const std::string& token, const std::string& body) {
  Request request;
  request.method_string(method);
  request.target(target);
  request.version(11);
  request.set(http::field::host, "localhost");
  if (!token.empty()) request.set(http::field::authorization, "Bearer " + token);
  if (!body.empty()) request.set(http::field::content_type, "application/json");
  request.body() = body;
  request.prepare_payload();
  return request;
}

void HttpConnection::send(const Request& request) {
  if (m_isRecorded) m_unanswered.push_back(request);
  http::write(m_socket, request);
}

void HttpConnection::sendBytes(const std::string& bytes) {
  m_isRecorded = false;
  asio::write(m_socket, asio::buffer(bytes));
}

HttpConnection::Response HttpConnection::receive(const std::string& method) {
  constexpr std::size_t kBodyLimit = 64 * 1024 * 1024;
  http::response_parser<http::string_body> parser;
  parser.skip(method == "HEAD");
  parser.body_limit(kBodyLimit);
  http::read(m_socket, m_buffer, parser);
  Response response = parser.release();
  if (!m_isRecorded || m_unanswered.empty()) return response;
  exchange_record::add(m_port, m_unanswered.front(), response);
  m_unanswered.pop_front();
  return response;
}

std::string HttpConnection::receiveToEnd() {
  std::string rest = boost::beast::buffers_to_string(m_buffer.data());
  m_buffer.clear();
  boost::system::error_code error;
  asio::read(m_socket, asio::dynamic_buffer(rest), error);
  return rest;
}

HttpConnection::Response HttpConnection::exchange(const Request& request) {
  send(request);
  return receive(std::string(request.method_string()));
}

void HttpConnection::close() {
  boost::system::error_code error;
  m_socket.close(error);
}
