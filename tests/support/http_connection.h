#ifndef MIRN_TESTS_SUPPORT_HTTP_CONNECTION_H
#define MIRN_TESTS_SUPPORT_HTTP_CONNECTION_H

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cstdint>
#include <deque>
#include <string>

/// One connection to a server on this machine, blocking: well-formed requests, or any bytes. What goes over
/// it is recorded (exchange_record.h) until bytes are sent: which answer is whose is not known then.
class HttpConnection {
 public:
  using Request = boost::beast::http::request<boost::beast::http::string_body>;
  using Response = boost::beast::http::response<boost::beast::http::string_body>;

  explicit HttpConnection(std::uint16_t port);

  /// A request with the token, and with `body` as JSON unless it is empty.
  static Request make(const std::string& method, const std::string& target, const std::string& token,
                      const std::string& body = "");

  void send(const Request& request);
  void sendBytes(const std::string& bytes);

  /// The next response. Raises `boost::system::system_error` when the server closes instead.
  Response receive(const std::string& method = "GET");

  /// All that comes until the server closes.
  std::string receiveToEnd();

  Response exchange(const Request& request);
  Response get(const std::string& target, const std::string& token) {
    return exchange(make("GET", target, token));
  }

  /// Waits until the server has sent something, and leaves it there.
  void awaitBytes() { m_socket.wait(boost::asio::ip::tcp::socket::wait_read); }

  /// Whether the server has sent something that is not received yet.
  bool hasBytes() const { return m_buffer.size() != 0 || m_socket.available() != 0; }

  /// Ends the connection at once.
  void close();

 private:
  boost::asio::io_context m_io;
  boost::asio::ip::tcp::socket m_socket{m_io};
  boost::beast::flat_buffer m_buffer;
  std::deque<Request> m_unanswered;
  std::uint16_t m_port;
  bool m_isRecorded = false;
};

#endif
