#ifndef MIRN_HOST_NET_CONNECTION_H
#define MIRN_HOST_NET_CONNECTION_H

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <memory>
#include <optional>
#include <string>

#include "net/shared_state.h"

namespace host {

/// One connection: reads a request, has it answered by a worker, writes the answer, and so on, one request
/// after the other in the order of their arrival. Each wait for the client has its deadline. Kept alive by
/// what it waits for.
class Connection : public std::enable_shared_from_this<Connection> {
 public:
  /// `socket` is on a strand of its own.
  Connection(boost::asio::ip::tcp::socket socket, SharedState& state);
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  void start();

  /// Ends the connection after the request under way, at once when there is none. Safe from any thread.
  void stop();

 private:
  using Parser = boost::beast::http::request_parser<boost::beast::http::string_body>;
  using Response = boost::beast::http::response<boost::beast::http::string_body>;
  using ErrorCode = boost::beast::error_code;

  void awaitRequest();
  void readHeader();
  void onHeader(ErrorCode error);
  void onReadFailure(ErrorCode error);
  void sendContinue();
  void readBody();
  void onBody(ErrorCode error);
  void run();
  void refuse(const std::exception& failure);
  void send(Answer answer);
  Response responseOf(Answer answer) const;
  void onSent(ErrorCode error);
  void close();
  void awaitEnd();
  RequestHead head() const;
  void log(unsigned status) const;

  SharedState& m_state;
  boost::beast::tcp_stream m_stream;
  boost::beast::flat_buffer m_buffer;
  std::optional<Parser> m_parser;  // one a request
  Job m_job;
  std::optional<Response> m_response;
  bool m_isIdle = false;
  bool m_isStopping = false;
};

}  // namespace host

#endif
