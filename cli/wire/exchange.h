#ifndef MIRN_CLI_WIRE_EXCHANGE_H
#define MIRN_CLI_WIRE_EXCHANGE_H

#include <boost/asio/generic/stream_protocol.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <utility>

#include "wire/connection.h"

namespace mirnctl {

/// TCP, or a Unix socket.
using Stream = boost::beast::basic_stream<boost::asio::generic::stream_protocol>;

/// What every connection does, over whatever transport. `destination` outlives it.
class Exchange : public Connection {
 public:
  Exchange(const Destination& destination, std::chrono::seconds patience)
      : m_destination(destination), m_patience(patience) {}

  bool isOpen() const override { return m_isOpen; }

 protected:
  using Head = boost::beast::http::request<boost::beast::http::string_body>;
  using WholeAnswer = boost::beast::http::response_parser<boost::beast::http::string_body>;
  using AnswerInPieces = boost::beast::http::response_parser<boost::beast::http::buffer_body>;
  using Error = boost::system::error_code;

  void connect(Stream& stream);

  /// Runs one operation to its end; it fails where it takes longer than the patience.
  template <typename Begin>
  Error tried(Stream& stream, const Begin& begin) {
    Error outcome = boost::asio::error::would_block;
    if (m_patience.count() > 0) stream.expires_after(m_patience);
    begin([&outcome](Error error, auto&&...) { outcome = error; });
    m_io.restart();
    m_io.run();
    return outcome;
  }

  template <typename Begin>
  void complete(Stream& stream, const Begin& begin) {
    if (const Error error = tried(stream, begin)) fail(error);
  }

  template <typename Transport>
  Reply askOver(Transport& transport, Stream& stream, const Request& request) {
    namespace http = boost::beast::http;
    const Head head = headOf(request);
    complete(stream, [&](auto handler) { http::async_write(transport, head, std::move(handler)); });
    WholeAnswer parser;
    parser.body_limit(kLargestAnswer);
    complete(stream,
             [&](auto handler) { http::async_read(transport, m_buffer, parser, std::move(handler)); });
    m_isOpen = parser.get().keep_alive();
    Reply reply = replyOf(parser.get());
    reply.body = std::move(parser.get().body());
    return reply;
  }

  template <typename Transport>
  Reply followOver(Transport& transport, Stream& stream, const Request& request,
                   const std::function<bool(std::string_view)>& take) {
    namespace http = boost::beast::http;
    const Head head = headOf(request);
    complete(stream, [&](auto handler) { http::async_write(transport, head, std::move(handler)); });
    AnswerInPieces parser;
    parser.body_limit(boost::none);
    complete(stream,
             [&](auto handler) { http::async_read_header(transport, m_buffer, parser, std::move(handler)); });
    m_isOpen = false;  // what is behind it stays unread
    Reply reply = replyOf(parser.get());
    std::string piece(kPiece, '\0');
    for (bool goesOn = true; goesOn && !parser.is_done();) {
      parser.get().body().data = piece.data();
      parser.get().body().size = piece.size();
      const Error error = tried(stream, [&](auto handler) {
        http::async_read_some(transport, m_buffer, parser, std::move(handler));
      });
      if (error && error != http::error::need_buffer) fail(error);
      const std::string_view read(piece.data(), piece.size() - parser.get().body().size);
      if (reply.status >= 300) {
        reply.body += read;
      } else {
        goesOn = take(read);
      }
    }
    return reply;
  }

  boost::asio::io_context m_io;

 private:
  /// A bundle of a large machine stays below it by far.
  static constexpr std::uint64_t kLargestAnswer = 1024ull * 1024 * 1024;
  static constexpr std::size_t kPiece = 16 * 1024;

  [[noreturn]] void fail(Error error);
  Head headOf(const Request& request) const;
  static Reply replyOf(const boost::beast::http::response_header<>& head);

  const Destination& m_destination;
  const std::chrono::seconds m_patience;
  boost::beast::flat_buffer m_buffer;
  bool m_isOpen = false;
};

}  // namespace mirnctl

#endif
