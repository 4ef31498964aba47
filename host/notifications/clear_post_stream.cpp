#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/write.hpp>
#include <utility>

#include "notifications/post_stream.h"

namespace host {

namespace {

class ClearPostStream final : public IPostStream {
 public:
  explicit ClearPostStream(boost::asio::io_context& io) : m_socket(io) {}

  boost::asio::ip::tcp::socket& socket() override { return m_socket; }

  void open(OnDone onDone) override {
    boost::asio::post(m_socket.get_executor(), [onDone = std::move(onDone)] { onDone({}, 0); });
  }

  void write(boost::asio::const_buffer bytes, OnDone onDone) override {
    boost::asio::async_write(m_socket, bytes, std::move(onDone));
  }

  void readSome(boost::asio::mutable_buffer bytes, OnDone onDone) override {
    m_socket.async_read_some(bytes, std::move(onDone));
  }

  std::string whyNotOpened(const ErrorCode& error) override { return error.message(); }

 private:
  boost::asio::ip::tcp::socket m_socket;
};

}  // namespace

std::unique_ptr<IPostStream> makeClearPostStream(boost::asio::io_context& io) {
  return std::make_unique<ClearPostStream>(io);
}

}  // namespace host
