#include "http/request_rules.h"

#include <boost/beast/core/string.hpp>
#include <boost/beast/http/rfc7230.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "answers/answer.h"
#include "http/characters.h"

namespace host {

namespace {

namespace http = boost::beast::http;
using boost::beast::iequals;
using Header = http::request_header<>;

constexpr unsigned kOldVersion = 10;
constexpr std::size_t kMostLengthDigits = 18;  // of what 64 bits hold for sure
constexpr std::string_view kLastEventId = "Last-Event-ID";

[[noreturn]] void refuse(const std::string& reason) {
  throw Refusal(400, "The request is not valid HTTP: " + reason);
}

/// The fields that the host goes by.
struct Fields {
  using Value = std::optional<std::string_view>;

  Value host;
  Value authorization;
  Value contentType;
  Value contentLength;
  Value transferEncoding;
  Value expect;
  bool hasContentEncoding = false;
  bool saysClose = false;
  bool saysKeepAlive = false;
  AnswerWishes wishes{};
};

/// One of those of which a reader that takes the first and one that takes the last would disagree.
void takeSingle(Fields::Value& value, const http::fields::value_type& field) {
  if (value) refuse("the field " + std::string(field.name_string()) + " is repeated");
  value = field.value();
}

/// Several lines of a list are one list.
void takeLine(std::optional<std::string>& list, std::string_view line) {
  if (list) {
    list->append(", ").append(line);
  } else {
    list.emplace(line);
  }
}

void takeConnection(Fields& fields, std::string_view words) {
  http::token_list list(words);
  fields.saysClose = fields.saysClose || list.exists("close");
  fields.saysKeepAlive = fields.saysKeepAlive || list.exists("keep-alive");
}

void take(Fields& fields, const http::fields::value_type& field) {
  switch (field.name()) {
    case http::field::host:
      return takeSingle(fields.host, field);
    case http::field::authorization:
      return takeSingle(fields.authorization, field);
    case http::field::content_type:
      return takeSingle(fields.contentType, field);
    case http::field::content_length:
      return takeSingle(fields.contentLength, field);
    case http::field::transfer_encoding:
      return takeSingle(fields.transferEncoding, field);
    case http::field::expect:
      if (!fields.expect) fields.expect = field.value();
      return;
    case http::field::content_encoding:
      fields.hasContentEncoding = true;
      return;
    case http::field::connection:
      return takeConnection(fields, field.value());
    case http::field::accept_encoding:
      return takeLine(fields.wishes.acceptEncoding, field.value());
    case http::field::if_match:
      return takeLine(fields.wishes.ifMatch, field.value());
    case http::field::if_none_match:
      return takeLine(fields.wishes.ifNoneMatch, field.value());
    case http::field::prefer:
      return takeLine(fields.wishes.prefer, field.value());
    case http::field::unknown:
      if (iequals(field.name_string(), kLastEventId)) takeLine(fields.wishes.lastEventId, field.value());
      return;
    default:
      return;
  }
}

Fields fieldsOf(const Header& header) {
  Fields fields;
  for (const auto& field : header) take(fields, field);
  return fields;
}

/// The body's length has to be beyond doubt: what one reader takes for the body would be the next request
/// for another.
void requireClearLength(const Fields& fields, unsigned version) {
  if (fields.contentLength) {
    const std::string_view digits = *fields.contentLength;
    if (digits.empty() || digits.size() > kMostLengthDigits || !hasOnly(digits, isDigit)) {
      refuse("its Content-Length is not a number");
    }
  }
  if (!fields.transferEncoding) return;
  if (fields.contentLength) refuse("it has a Content-Length and a Transfer-Encoding");
  if (version <= kOldVersion) refuse("HTTP/1.0 has no Transfer-Encoding");
  if (!iequals(*fields.transferEncoding, "chunked")) refuse("its Transfer-Encoding is another than chunked");
}

bool isOurs(const std::string& host, const HostNames& names, const Destination& destination) {
  return names.has(host) || (!destination.address.empty() && host == destination.address);
}

struct Target {
  std::string path;      // with the query
  std::string scheme{};  // empty for a path alone
  std::string authority{};
};

/// A target is a path, "*" for the host as a whole, or a whole URI as a proxy sends it.
Target targetOf(const Header& header) {
  const std::string_view text = header.target();
  if (text.front() == '/' || (text == "*" && header.method() == http::verb::options))
    return {std::string(text)};
  const std::size_t schemeEnd = text.find("://");
  if (schemeEnd == std::string_view::npos || schemeEnd == 0) refuse("its target is neither a path nor a URI");
  const std::string_view rest = text.substr(schemeEnd + 3);
  const std::size_t authorityEnd = rest.find_first_of("/?");
  Target target{"/", std::string(text.substr(0, schemeEnd)), std::string(rest.substr(0, authorityEnd))};
  if (authorityEnd == std::string_view::npos) {
    if (header.method() == http::verb::options) target.path = "*";
  } else {
    const std::string_view path = rest.substr(authorityEnd);
    target.path = (path.front() == '/' ? "" : "/") + std::string(path);
  }
  return target;
}

void requireOurs(const Fields& fields, unsigned version, const Target& target, const HostNames& names,
                 const Destination& destination) {
  if (!fields.host && version > kOldVersion) refuse("it has no Host");
  std::string host;
  if (fields.host) host = HostNames::hostOf(*fields.host);
  // A whole URI tells the host itself, and the field counts for nothing then.
  if (!target.scheme.empty()) host = HostNames::hostOf(target.authority);
  if (host.empty()) return;
  const bool isOurScheme =
      target.scheme.empty() || iequals(target.scheme, destination.isEncrypted ? "https" : "http");
  if (!isOurScheme || !isOurs(host, names, destination)) {
    throw Refusal(421, "The request is for another host: --server-name lets this one go by more names");
  }
}

/// HTTP/1.0 knows no expectations.
bool awaitsContinue(const Fields& fields, unsigned version) {
  if (!fields.expect || version <= kOldVersion) return false;
  if (iequals(*fields.expect, "100-continue")) return true;
  throw Refusal(417, "The host meets no other expectation than 100-continue");
}

/// As the header itself says it; a trailer comes too late to have a say.
bool keepsConnection(const Fields& fields, unsigned version) {
  return !fields.saysClose && (version > kOldVersion || fields.saysKeepAlive);
}

}  // namespace

Request judgedRequest(const Header& header, const HostNames& names, const Destination& destination) {
  Fields fields = fieldsOf(header);
  const unsigned version = header.version();
  requireClearLength(fields, version);
  Target target = targetOf(header);
  requireOurs(fields, version, target, names, destination);
  if (fields.hasContentEncoding) throw Refusal(415, "The host takes no encoded bodies");
  return {std::string(header.method_string()),
          std::move(target.path),
          std::string(fields.authorization.value_or("")),
          std::string(fields.contentType.value_or("")),
          version,
          keepsConnection(fields, version),
          false,
          awaitsContinue(fields, version),
          std::move(fields.wishes)};
}

}  // namespace host
