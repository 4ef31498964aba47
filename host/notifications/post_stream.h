#ifndef MIRN_HOST_NOTIFICATIONS_POST_STREAM_H
#define MIRN_HOST_NOTIFICATIONS_POST_STREAM_H

#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/system/error_code.hpp>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace host {

/// The connection of one try, in clear or by TLS.
class IPostStream {
 public:
  using ErrorCode = boost::system::error_code;
  using OnDone = std::function<void(const ErrorCode&, std::size_t)>;

  virtual ~IPostStream() = default;

  virtual boost::asio::ip::tcp::socket& socket() = 0;
  /// Once the socket is connected.
  virtual void open(OnDone onDone) = 0;
  virtual void write(boost::asio::const_buffer bytes, OnDone onDone) = 0;
  virtual void readSome(boost::asio::mutable_buffer bytes, OnDone onDone) = 0;
  /// In words, where `open` failed with `error`.
  virtual std::string whyNotOpened(const ErrorCode& error) = 0;
};

/// Whom we trust to say who a receiver is. Safe from any thread.
class IPostEncryption {
 public:
  virtual ~IPostEncryption() = default;

  /// To `host`, whose certificate must name it.
  virtual std::unique_ptr<IPostStream> makeStream(boost::asio::io_context& io, const std::string& host) = 0;
};

/// `authorities` is a file of PEM; empty: those of the system. Raises `std::runtime_error` with the reason
/// when it does not serve. One source a system.
std::shared_ptr<IPostEncryption> makePostEncryption(const std::string& authorities);

std::unique_ptr<IPostStream> makeClearPostStream(boost::asio::io_context& io);

}  // namespace host

#endif
