#include "destination/destination.h"

#include <algorithm>

#include "exit_status.h"

namespace mirnctl {

namespace {

constexpr char kUnix[] = "unix:";
constexpr char kPlain[] = "http://";
constexpr char kSecure[] = "https://";
constexpr char kUsualPort[] = "8080";
constexpr char kUsualSecurePort[] = "443";
constexpr int kLargestPort = 65535;

bool takeOff(std::string& text, const std::string& prefix) {
  if (text.compare(0, prefix.size(), prefix) != 0) return false;
  text.erase(0, prefix.size());
  return true;
}

[[noreturn]] void refuse(const std::string& text) {
  throw Failure(ExitStatus::kUsage, "'" + text + "' is no address of a service",
                "say http://HOST:PORT, https://HOST:PORT or unix:PATH");
}

bool isPort(const std::string& text) {
  return !text.empty() && text.size() <= 5 && text.find_first_not_of("0123456789") == std::string::npos &&
         std::stoi(text) > 0 && std::stoi(text) <= kLargestPort;
}

bool isHost(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) {
    return c > ' ' && c < 0x7f && std::string("/?#@[]\\").find(static_cast<char>(c)) == std::string::npos;
  });
}

/// Brackets are around an address that has colons itself.
std::string takeHost(std::string& text) {
  const bool isBracketed = !text.empty() && text.front() == '[';
  const std::size_t end = isBracketed ? text.find(']') : text.find(':');
  const std::string host = text.substr(isBracketed ? 1 : 0, isBracketed ? end - 1 : end);
  text.erase(0, end == std::string::npos ? end : end + (isBracketed ? 1 : 0));
  return host;
}

}  // namespace

std::string Destination::authority() const {
  if (!socketPath.empty()) return "localhost";
  const std::string name = host.find(':') == std::string::npos ? host : '[' + host + ']';
  const bool isUsual = isSecure ? port == kUsualSecurePort : port == "80";
  return isUsual ? name : name + ':' + port;
}

std::string Destination::url() const {
  if (!bundle.empty()) return bundle;
  if (!socketPath.empty()) return kUnix + socketPath;
  return (isSecure ? kSecure : kPlain) + authority();
}

Destination destinationOf(const std::string& text) {
  Destination destination;
  std::string rest = text;
  if (takeOff(rest, kUnix)) {
    if (rest.empty()) refuse(text);
    destination.socketPath = rest;
    return destination;
  }
  destination.isSecure = takeOff(rest, kSecure);
  if (!destination.isSecure) takeOff(rest, kPlain);
  while (!rest.empty() && rest.back() == '/') rest.pop_back();
  destination.host = takeHost(rest);
  if (!isHost(destination.host)) refuse(text);
  destination.port = destination.isSecure ? kUsualSecurePort : kUsualPort;
  if (!rest.empty()) {
    if (rest.front() != ':' || !isPort(rest.substr(1))) refuse(text);
    destination.port = rest.substr(1);
  }
  return destination;
}

}  // namespace mirnctl
