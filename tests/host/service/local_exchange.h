#ifndef MIRN_TESTS_HOST_SERVICE_LOCAL_EXCHANGE_H
#define MIRN_TESTS_HOST_SERVICE_LOCAL_EXCHANGE_H

#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <string>

namespace host {

/// What a host answers over the Unix socket at `path`, until it closes.
inline std::string localExchange(const std::string& path, const std::string& request) {
  boost::asio::io_context io;
  boost::asio::local::stream_protocol::socket socket(io);
  socket.connect(boost::asio::local::stream_protocol::endpoint(path));
  boost::asio::write(socket, boost::asio::buffer(request));
  std::string answer;
  boost::system::error_code error;
  boost::asio::read(socket, boost::asio::dynamic_buffer(answer), error);
  return answer;
}

}  // namespace host

#endif
