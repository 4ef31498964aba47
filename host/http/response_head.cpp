#include "http/response_head.h"

#include <array>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/message.hpp>
#include <boost/beast/http/serializer.hpp>
#include <chrono>
#include <utility>

#include "http/date.h"

namespace host {

namespace {

constexpr unsigned kNoContent = 204;

/// What keeps a browser from making anything of an answer but what it is; an answer may have its own.
constexpr std::array<std::pair<const char*, const char*>, 4> kSafety{
    {{"X-Content-Type-Options", "nosniff"},
     {"Content-Security-Policy", "default-src 'none'; frame-ancestors 'none'"},
     {"Cross-Origin-Resource-Policy", "same-origin"},
     {"Referrer-Policy", "no-referrer"}}};

}  // namespace

std::string responseHead(const Answer& answer, unsigned version, bool keepsConnection) {
  namespace http = boost::beast::http;
  http::response<http::empty_body> head(http::int_to_status(answer.status), version);
  head.set(http::field::date, httpDate(std::chrono::system_clock::now()));
  head.set(http::field::cache_control, "no-store");
  for (const auto& [name, value] : kSafety) head.set(name, value);
  for (const auto& [name, value] : answer.headers) head.set(name, value);
  head.keep_alive(keepsConnection);
  if (!answer.body.empty()) head.set(http::field::content_type, answer.contentType);
  if (answer.status != kNoContent) head.content_length(answer.body.size());
  http::response_serializer<http::empty_body> serializer(head);
  std::string text;
  boost::beast::error_code error;
  serializer.next(error, [&text](boost::beast::error_code&, const auto& buffers) {
    text = boost::beast::buffers_to_string(buffers);
  });
  return text;
}

}  // namespace host
