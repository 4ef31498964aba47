#ifndef MIRN_HOST_NOTIFICATIONS_HTTP_POST_H
#define MIRN_HOST_NOTIFICATIONS_HTTP_POST_H

#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "notifications/post_stream.h"
#include "notifications/webhook_url.h"

namespace host {

/// One request over a connection of its own, with an end to all of it. Redirects are not followed, and of the
/// answer no more is read than its header, within `kMostRead`.
class HttpPost {
 public:
  /// Why there is no answer; the text shows nothing of target, credentials and body.
  class Failure : public std::runtime_error {
   public:
    using std::runtime_error::runtime_error;
  };

  static constexpr std::size_t kMostRead = 4096;

  /// `encryption` for a URL of https; outlives this.
  HttpPost(const WebhookUrl& url, IPostEncryption* encryption, std::chrono::milliseconds patience);

  /// Sends `request`, which is a whole one, and gives the status of the answer. Raises `Failure`. Once.
  unsigned exchange(const std::string& request);

  /// From any thread: an exchange ends within moments, and does not begin any more.
  void stop();

 private:
  using Clock = std::chrono::steady_clock;
  using Endpoints = std::vector<boost::asio::ip::tcp::endpoint>;
  using ErrorCode = boost::system::error_code;

  struct Step {
    ErrorCode error;
    std::size_t count = 0;
  };

  template <class Start>
  Step await(Clock::time_point end, const Start& start);

  Endpoints endpoints();
  Endpoints lookedUp();
  void connect();
  void open();
  void write(const std::string& request);
  unsigned readStatus();

  const WebhookUrl& m_url;
  const Clock::time_point m_end;
  std::vector<char> m_answer;
  const std::shared_ptr<boost::asio::io_context> m_io;  ///< A look-up that hangs holds it beyond the end.
  const std::unique_ptr<IPostStream> m_stream;
  std::atomic<bool> m_isStopped{false};
};

}  // namespace host

#endif
