#include "wire/exchange.h"

namespace mirnctl {

namespace {

class PlainConnection : public Exchange {
 public:
  PlainConnection(const Destination& destination, std::chrono::seconds patience)
      : Exchange(destination, patience), m_stream(m_io) {
    connect(m_stream);
  }

  Reply ask(const Request& request) override { return askOver(m_stream, m_stream, request); }
  Reply follow(const Request& request, const std::function<bool(std::string_view)>& take) override {
    return followOver(m_stream, m_stream, request, take);
  }

 private:
  Stream m_stream;
};

}  // namespace

std::unique_ptr<Connection> plainConnection(const Destination& destination, std::chrono::seconds patience) {
  return std::make_unique<PlainConnection>(destination, patience);
}

}  // namespace mirnctl
