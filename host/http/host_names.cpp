#include "http/host_names.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>

#include "answers/answer.h"
#include "http/characters.h"

namespace host {

namespace {

namespace ip = boost::asio::ip;

constexpr std::size_t kLongestName = 253;
constexpr std::size_t kMostPortDigits = 5;
constexpr long kLastPort = 65535;

void require(bool isRight) {
  if (!isRight) throw Refusal(400, "The request does not name one host");
}

void requirePort(std::string_view port) {
  require(port.size() <= kMostPortDigits && hasOnly(port, isDigit));
  require(port.empty() || std::stol(std::string(port)) <= kLastPort);
}

bool isNameCharacter(char character) {
  return isDigit(character) || isLetter(character) || character == '-' || character == '.' ||
         character == '_';
}

/// An address has many ways to be written, but of IPv4 the usual one alone is one here; others, which some
/// systems take, are names.
std::string comparable(std::string_view host) {
  boost::system::error_code error;
  if (host.find(':') != std::string_view::npos) {
    const ip::address address = ip::make_address(std::string(host), error);
    if (!error) return address.to_string();
  }
  if (host.size() > 1 && host.back() == '.') host.remove_suffix(1);
  std::string name(host);
  std::transform(name.begin(), name.end(), name.begin(), toLower);
  return name;
}

}  // namespace

HostNames::HostNames(const std::vector<std::string>& names) : m_names{"localhost", "127.0.0.1", "::1"} {
  for (const std::string& name : names) m_names.insert(comparable(name));
}

std::string HostNames::hostOf(std::string_view authority) {
  if (!authority.empty() && authority.front() == '[') {
    const std::size_t end = authority.find(']');
    require(end != std::string_view::npos);
    const std::string_view behind = authority.substr(end + 1);
    require(behind.empty() || behind.front() == ':');
    requirePort(behind.substr(behind.empty() ? 0 : 1));
    const std::string_view address = authority.substr(1, end - 1);
    boost::system::error_code error;
    const auto parsed = ip::make_address_v6(std::string(address), error);
    require(!error && address.find('%') == std::string_view::npos);
    return parsed.to_string();
  }
  const std::size_t end = authority.find(':');
  const std::string_view name = authority.substr(0, end);
  require(!name.empty() && name.size() <= kLongestName && hasOnly(name, isNameCharacter));
  if (end != std::string_view::npos) requirePort(authority.substr(end + 1));
  return comparable(name);
}

}  // namespace host
