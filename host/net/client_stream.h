#ifndef MIRN_HOST_NET_CLIENT_STREAM_H
#define MIRN_HOST_NET_CLIENT_STREAM_H

#include <array>
#include <boost/asio/any_io_executor.hpp>
#include <boost/asio/buffer.hpp>
#include <boost/system/error_code.hpp>
#include <cstddef>
#include <functional>
#include <string>

#include "http/request.h"
#include "identity/client.h"

namespace host {

/// The bytes from and to one client, however they are carried. Lives on one strand: everything is called
/// there, and every handler comes there, never from within the call that takes it, but for `open`. At most
/// one read and one write are under way. What is under way when the stream is closed ends with an error.
/// Handlers may be copied.
class ClientStream {
 public:
  using ErrorCode = boost::system::error_code;
  using OnDone = std::function<void(ErrorCode)>;
  using Buffers = std::array<boost::asio::const_buffer, 2>;  ///< One behind the other; may be empty.
  using OnRead = std::function<void(ErrorCode, std::size_t)>;

  virtual ~ClientStream() = default;

  virtual boost::asio::any_io_executor executor() = 0;

  /// Agrees with the client on how bytes are carried. Comes first, and its handler at once where there is
  /// nothing to agree on: a turn of a busy loop is what a new client would wait for.
  virtual void open(OnDone onDone) = 0;

  /// Who is at the other end, and where they came in. Once the stream is open.
  virtual const Client& client() const = 0;
  virtual const Destination& destination() const = 0;

  virtual void readSome(boost::asio::mutable_buffer buffer, OnRead onRead) = 0;

  /// All of it; the bytes stay until the handler comes.
  virtual void write(const Buffers& buffers, OnDone onDone) = 0;

  /// Says to the client that nothing more comes; reading goes on.
  virtual void finish(OnDone onDone) = 0;

  /// At once.
  virtual void close() = 0;

  /// Closes at once, and says first that nothing more comes, where a client could take less for a cut. The
  /// handler comes when nothing is under way any more.
  virtual void quit(OnDone onDone) = 0;

  /// Instead of all else, on any thread: closes, and gives `answer` along if that needs no waiting.
  virtual void turnAway(const std::string& answer) = 0;
};

}  // namespace host

#endif
