#include "notifications/webhook_url.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/asio/ip/address.hpp>
#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>
#include <cctype>
#include <charconv>
#include <stdexcept>

namespace host {

namespace {

constexpr std::uint16_t kHttpPort = 80;
constexpr std::uint16_t kHttpsPort = 443;

std::uint16_t usualPort(bool isEncrypted) { return isEncrypted ? kHttpsPort : kHttpPort; }

bool isIpv6(const std::string& host) { return host.find(':') != std::string::npos; }

std::string bracketed(const std::string& host) { return isIpv6(host) ? '[' + host + ']' : host; }

std::string textOf(boost::core::string_view text) { return {text.data(), text.size()}; }

[[noreturn]] void refuse(const char* why) { throw std::invalid_argument(why); }

bool isEncryptedBy(const boost::urls::url_view& url) {
  if (url.scheme_id() == boost::urls::scheme::https) return true;
  if (url.scheme_id() != boost::urls::scheme::http) refuse("is not a URL of https or http");
  return false;
}

/// A name as certificates and the Host field have it, or an address.
std::string hostOf(const boost::urls::url_view& url) {
  if (!url.has_authority() || url.host_address().empty()) refuse("names no host");
  const std::string host = url.host_address();
  const bool isPlain = std::all_of(host.begin(), host.end(), [](unsigned char c) {
    return c < 0x80 && (std::isalnum(c) != 0 || c == '-' || c == '.' || c == ':' || c == '_');
  });
  if (!isPlain) refuse("has another character in its host than letters, digits, '-', '_' and '.'");
  return host;
}

std::uint16_t portOf(const boost::urls::url_view& url, bool isEncrypted) {
  if (!url.has_port() || url.port().empty()) return usualPort(isEncrypted);
  const std::string text = textOf(url.port());
  std::uint16_t port = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), port);
  if (result.ec != std::errc() || port == 0) refuse("has a port that is none");
  return port;
}

std::string targetOf(const boost::urls::url_view& url) {
  const std::string target = textOf(url.encoded_target());
  return target.empty() || target.front() != '/' ? '/' + target : target;
}

std::string credentialsOf(const boost::urls::url_view& url) {
  if (!url.has_userinfo()) return {};
  const std::string user = url.user();
  if (user.find(':') != std::string::npos) refuse("has a colon in its user's name");
  return user + ':' + url.password();
}

}  // namespace

std::string WebhookUrl::origin() const { return (isEncrypted ? "https://" : "http://") + hostField(); }

std::string WebhookUrl::hostField() const {
  if (port == usualPort(isEncrypted)) return bracketed(host);
  return bracketed(host) + ':' + std::to_string(port);
}

WebhookUrl webhookUrlOf(const std::string& text) {
  const auto parsed = boost::urls::parse_uri(text);
  if (!parsed) refuse("is not a URL");
  const boost::urls::url_view& url = *parsed;
  WebhookUrl result;
  result.isEncrypted = isEncryptedBy(url);
  result.host = hostOf(url);
  if (url.has_fragment()) refuse("has a fragment, which is sent to nobody");
  result.port = portOf(url, result.isEncrypted);
  result.target = targetOf(url);
  result.credentials = credentialsOf(url);
  if (!result.isEncrypted && !isLoopback(result.host))
    refuse("goes in clear to another host than the loopback");
  if (result.isEncrypted && *kWhyNoHttps != '\0') {
    throw std::invalid_argument(std::string("is of https: ") + kWhyNoHttps);
  }
  return result;
}

bool isLoopback(const std::string& host) {
  if (boost::algorithm::iequals(host, "localhost")) return true;
  boost::system::error_code error;
  const auto address = boost::asio::ip::make_address(host, error);
  return !error && address.is_loopback();
}

}  // namespace host
