// The ceiling for a host on the same libraries: answers every request with the bytes of a file, on a port of
// the loopback that it prints. Arguments: the file, the number of threads.
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/strand.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;
using Response = http::response<http::span_body<const char>>;

Response responseOf(const std::string& bytes) {
  Response response{http::status::ok, 11};
  response.set(http::field::content_type, "application/json");
  response.body() = {bytes.data(), bytes.size()};
  response.prepare_payload();
  return response;
}

class Session : public std::enable_shared_from_this<Session> {
 public:
  Session(tcp::socket socket, const std::string& bytes)
      : m_stream(std::move(socket)), m_response(responseOf(bytes)) {}

  void read() {
    m_request = {};
    http::async_read(m_stream, m_buffer, m_request,
                     [self = shared_from_this()](const beast::error_code& error, std::size_t) {
                       if (!error) self->write();
                     });
  }

 private:
  void write() {
    m_serializer = std::make_unique<http::response_serializer<http::span_body<const char>>>(m_response);
    http::async_write(m_stream, *m_serializer,
                      [self = shared_from_this()](const beast::error_code& error, std::size_t) {
                        if (!error) self->read();
                      });
  }

  beast::tcp_stream m_stream;
  beast::flat_buffer m_buffer;
  http::request<http::empty_body> m_request;
  Response m_response;
  std::unique_ptr<http::response_serializer<http::span_body<const char>>> m_serializer;
};

void accept(tcp::acceptor& acceptor, asio::io_context& context, const std::string& bytes) {
  acceptor.async_accept(asio::make_strand(context), [&](const beast::error_code& error, tcp::socket socket) {
    if (error) return;
    socket.set_option(tcp::no_delay(true));
    std::make_shared<Session>(std::move(socket), bytes)->read();
    accept(acceptor, context, bytes);
  });
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: constant_server FILE THREADS\n";
    return 2;
  }
  std::ifstream file(argv[1], std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  const int threadCount = std::stoi(argv[2]);
  asio::io_context context(threadCount);
  tcp::acceptor acceptor(context, {asio::ip::address_v4::loopback(), 0});
  accept(acceptor, context, bytes);
  std::cout << acceptor.local_endpoint().port() << std::endl;
  std::vector<std::thread> threads;
  for (int i = 0; i < threadCount; ++i) threads.emplace_back([&context] { context.run(); });
  for (std::thread& thread : threads) thread.join();
  return 0;
}
