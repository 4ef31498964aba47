#include "http/request_rules.h"

#include <algorithm>
#include <boost/beast/core/string.hpp>
#include <boost/beast/http/rfc7230.hpp>
#include <iterator>
#include <string>
#include <string_view>

#include "answers/answer.h"
#include "http/characters.h"

namespace host {

namespace {

namespace http = boost::beast::http;
using boost::beast::iequals;
using Header = http::request_header<>;

constexpr unsigned kOldVersion = 10;
constexpr std::size_t kMostLengthDigits = 18;  // of what 64 bits hold for sure

[[noreturn]] void refuse(const std::string& reason) {
  throw Refusal(400, "The request is not valid HTTP: " + reason);
}

/// Fields of which a reader that takes the first and one that takes the last would disagree.
void requireSingleFields(const Header& header) {
  for (const auto field : {http::field::host, http::field::authorization, http::field::content_type,
                           http::field::content_length, http::field::transfer_encoding}) {
    const auto [first, end] = header.equal_range(field);
    if (first != end && std::next(first) != end) {
      refuse("the field " + std::string(http::to_string(field)) + " is repeated");
    }
  }
}

/// The body's length has to be beyond doubt: what one reader takes for the body would be the next request
/// for another.
void requireClearLength(const Header& header) {
  const auto end = header.end();
  const auto coding = header.find(http::field::transfer_encoding);
  const auto length = header.find(http::field::content_length);
  if (length != end) {
    const std::string_view digits = length->value();
    if (digits.empty() || digits.size() > kMostLengthDigits || !hasOnly(digits, isDigit)) {
      refuse("its Content-Length is not a number");
    }
  }
  if (coding == end) return;
  if (length != end) refuse("it has a Content-Length and a Transfer-Encoding");
  if (header.version() <= kOldVersion) refuse("HTTP/1.0 has no Transfer-Encoding");
  if (!iequals(coding->value(), "chunked")) refuse("its Transfer-Encoding is another than chunked");
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

void requireOurs(const Header& header, const Target& target, const HostNames& names,
                 const Destination& destination) {
  const bool hasHost = header.count(http::field::host) != 0;
  if (!hasHost && header.version() > kOldVersion) refuse("it has no Host");
  std::string host;
  if (hasHost) host = HostNames::hostOf(header[http::field::host]);
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
bool awaitsContinue(const Header& header) {
  const auto expect = header.find(http::field::expect);
  if (expect == header.end() || header.version() <= kOldVersion) return false;
  if (iequals(expect->value(), "100-continue")) return true;
  throw Refusal(417, "The host meets no other expectation than 100-continue");
}

bool hasConnectionWord(const Header& header, std::string_view word) {
  const auto [first, end] = header.equal_range(http::field::connection);
  return std::any_of(first, end,
                     [word](const auto& field) { return http::token_list(field.value()).exists(word); });
}

/// As the header itself says it; a trailer comes too late to have a say.
bool keepsConnection(const Header& header) {
  if (hasConnectionWord(header, "close")) return false;
  return header.version() > kOldVersion || hasConnectionWord(header, "keep-alive");
}

}  // namespace

Request judgedRequest(const Header& header, const HostNames& names, const Destination& destination) {
  requireSingleFields(header);
  requireClearLength(header);
  const Target target = targetOf(header);
  requireOurs(header, target, names, destination);
  if (header.count(http::field::content_encoding) != 0) {
    throw Refusal(415, "The host takes no encoded bodies");
  }
  return {std::string(header.method_string()),
          target.path,
          std::string(header[http::field::authorization]),
          std::string(header[http::field::content_type]),
          header.version(),
          keepsConnection(header),
          false,
          awaitsContinue(header)};
}

}  // namespace host
