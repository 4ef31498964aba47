#ifndef MIRN_TESTS_HOST_NET_LISTENING_CLIENT_H
#define MIRN_TESTS_HOST_NET_LISTENING_CLIENT_H

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <cstdint>
#include <string>

namespace host {

/// Reads an answer on the loopback as it comes, and never waits for ever.
class ListeningClient {
 public:
  /// `receiveBytes`: of the system's own buffer, 0 for as many as it likes.
  explicit ListeningClient(std::uint16_t port, int receiveBytes = 0);

  /// A GET; `fields` are whole lines of the header.
  void get(const std::string& target, const std::string& fields = "");
  void send(const std::string& bytes);

  /// Until `text` has come; false when the connection ends without, or nothing comes for a long time.
  bool await(const std::string& text);
  /// The same for so many bytes.
  bool await(std::size_t bytes);
  /// True when the server has closed in good order.
  bool awaitEnd();

  /// All that has come so far.
  const std::string& text() const { return m_text; }
  /// What has come behind the header, out of its chunks; `isWhole` when the last one of them was there, too.
  std::string body() const;
  bool isWhole() const;

  void close();

 private:
  bool readSome();

  boost::asio::io_context m_io;
  boost::asio::ip::tcp::socket m_socket{m_io};
  std::string m_text;
  bool m_hasEnded = false;
  bool m_hasEndedWell = false;
};

}  // namespace host

#endif
