#include "host/net/listening_client.h"

#include <algorithm>
#include <array>
#include <boost/asio/buffer.hpp>
#include <boost/asio/error.hpp>
#include <boost/asio/write.hpp>
#include <chrono>
#include <cstdlib>

namespace host {

namespace {

namespace asio = boost::asio;

constexpr std::chrono::seconds kPatience{20};

/// What a body of chunks holds, and whether it is there to its end.
struct Chunks {
  std::string bytes{};
  bool isWhole = false;
};

Chunks chunksIn(const std::string& text) {
  Chunks chunks;
  std::size_t place = 0;
  for (;;) {
    const std::size_t lineEnd = text.find("\r\n", place);
    if (lineEnd == std::string::npos) return chunks;
    const std::size_t size = std::strtoul(text.c_str() + place, nullptr, 16);
    const std::size_t begin = lineEnd + 2;
    if (text.size() < begin + size + 2) {
      chunks.bytes += text.substr(begin, size);
      return chunks;
    }
    chunks.bytes += text.substr(begin, size);
    chunks.isWhole = size == 0;
    if (chunks.isWhole) return chunks;
    place = begin + size + 2;
  }
}

}  // namespace

ListeningClient::ListeningClient(std::uint16_t port, int receiveBytes) {
  m_socket.open(asio::ip::tcp::v4());
  if (receiveBytes != 0) m_socket.set_option(asio::socket_base::receive_buffer_size(receiveBytes));
  m_socket.connect({asio::ip::address_v4::loopback(), port});
}

void ListeningClient::get(const std::string& target, const std::string& fields) {
  send("GET " + target + " HTTP/1.1\r\nHost: localhost\r\n" + fields + "\r\n");
}

void ListeningClient::send(const std::string& bytes) { asio::write(m_socket, asio::buffer(bytes)); }

bool ListeningClient::readSome() {
  if (m_hasEnded) return false;
  std::array<char, 65536> buffer{};
  std::size_t count = 0;
  boost::system::error_code error = asio::error::timed_out;
  m_socket.async_read_some(asio::buffer(buffer), [&](boost::system::error_code given, std::size_t received) {
    error = given;
    count = received;
  });
  m_io.restart();
  m_io.run_for(kPatience);
  if (error == asio::error::timed_out) {
    close();
    m_io.restart();
    m_io.run();  // the read still has the buffer
  }
  m_text.append(buffer.data(), count);
  m_hasEnded = error.failed();
  m_hasEndedWell = error == asio::error::eof;
  return !m_hasEnded;
}

bool ListeningClient::await(const std::string& text) {
  std::size_t looked = 0;
  while (m_text.find(text, looked) == std::string::npos) {
    looked = m_text.size() - std::min(m_text.size(), text.size());
    if (!readSome()) return false;
  }
  return true;
}

bool ListeningClient::await(std::size_t bytes) {
  while (m_text.size() < bytes) {
    if (!readSome()) return false;
  }
  return true;
}

bool ListeningClient::awaitEnd() {
  while (readSome()) continue;
  return m_hasEndedWell;
}

std::string ListeningClient::body() const {
  const std::size_t end = m_text.find("\r\n\r\n");
  return end == std::string::npos ? std::string() : chunksIn(m_text.substr(end + 4)).bytes;
}

bool ListeningClient::isWhole() const {
  const std::size_t end = m_text.find("\r\n\r\n");
  return end != std::string::npos && chunksIn(m_text.substr(end + 4)).isWhole;
}

void ListeningClient::close() {
  boost::system::error_code error;
  m_socket.close(error);
}

}  // namespace host
