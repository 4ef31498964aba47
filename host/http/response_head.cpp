#include "http/response_head.h"

#include <boost/beast/http/status.hpp>
#include <chrono>
#include <string_view>

#include "answers/answer_fields.h"
#include "http/date.h"

namespace host {

namespace {

constexpr unsigned kCurrentVersion = 11;
constexpr std::size_t kUsualBytes = 640;

void appendStatus(std::string& text, unsigned status, unsigned version) {
  text.append(version == kCurrentVersion ? "HTTP/1.1 " : "HTTP/1.0 ");
  text.append(std::to_string(status)).append(" ");
  text.append(
      std::string_view(boost::beast::http::obsolete_reason(boost::beast::http::int_to_status(status))));
  text.append("\r\n");
}

/// Only what differs from what the version means by itself.
void appendConnection(std::string& text, unsigned version, bool keepsConnection) {
  const bool isCurrent = version == kCurrentVersion;
  if (isCurrent == keepsConnection) return;
  text.append(isCurrent ? "Connection: close\r\n" : "Connection: keep-alive\r\n");
}

}  // namespace

std::string responseHead(const Answer& answer, unsigned version, bool keepsConnection) {
  std::string text;
  text.reserve(kUsualBytes);
  appendStatus(text, answer.status, version);
  text.append("Date: ").append(httpDateNow()).append("\r\n");
  appendConnection(text, version, keepsConnection);
  if (answer.isInParts && version == kCurrentVersion) text.append("Transfer-Encoding: chunked\r\n");
  text.append(answer.rendered.empty() ? answerFields(answer) : answer.rendered);
  return text.append("\r\n");
}

}  // namespace host
