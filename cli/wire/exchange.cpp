#include "wire/exchange.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <vector>

#include "exit_status.h"
#include "wire/local_end.h"

namespace mirnctl {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;

void Exchange::fail(Error error) {
  m_isOpen = false;
  const bool isTime = error == beast::error::timeout;
  throw Failure(ExitStatus::kUnreachable,
                m_destination.url() + ": " + (isTime ? "no answer in time" : error.message()),
                "is the service running? --host, MIRN_HOST or a profile tell where");
}

void Exchange::connect(Stream& stream) {
  std::vector<Stream::endpoint_type> ends;
  if (!m_destination.socketPath.empty()) {
    ends.push_back(localEnd(m_destination.socketPath));
  } else {
    asio::ip::tcp::resolver resolver(m_io);
    Error error;
    for (const auto& found : resolver.resolve(m_destination.host, m_destination.port, error)) {
      ends.emplace_back(found.endpoint());
    }
    if (error) fail(error);
  }
  Error error = asio::error::host_not_found;
  for (const auto& end : ends) {
    error = tried(stream, [&](auto handler) { stream.async_connect(end, std::move(handler)); });
    if (!error) break;
    Error ignored;
    stream.socket().close(ignored);
  }
  if (error) fail(error);
  m_isOpen = true;
}

Exchange::Head Exchange::headOf(const Request& request) const {
  Head head(http::string_to_verb(request.method), request.target, 11);
  head.set(http::field::host, m_destination.authority());
  head.set(http::field::user_agent, "mirnctl");
  if (!m_destination.token.empty()) head.set(http::field::authorization, "Bearer " + m_destination.token);
  for (const auto& [name, value] : request.fields) head.set(name, value);
  if (!request.body.empty()) head.set(http::field::content_type, "application/json");
  head.body() = request.body;
  const bool mayHaveBody = request.method == "PUT" || request.method == "POST";
  if (mayHaveBody || !request.body.empty()) head.prepare_payload();
  return head;
}

Reply Exchange::replyOf(const http::response_header<>& head) {
  Reply reply;
  reply.status = head.result_int();
  for (const auto& field : head) {
    reply.fields[boost::algorithm::to_lower_copy(std::string(field.name_string()))] = field.value();
  }
  return reply;
}

}  // namespace mirnctl
