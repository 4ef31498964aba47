#ifndef MIRN_HOST_NOTIFICATIONS_WEBHOOK_URL_H
#define MIRN_HOST_NOTIFICATIONS_WEBHOOK_URL_H

#include <cstdint>
#include <string>

namespace host {

/// Where notifications are posted to. Its credentials and the target, which may hold a key, are for the
/// receiver alone. Plain value.
struct WebhookUrl {
  bool isEncrypted = false;
  std::string host;  ///< A name or an address, without brackets.
  std::uint16_t port = 0;
  std::string target;       ///< Path and query, from its first '/'.
  std::string credentials;  ///< "USER:PASSWORD", decoded; empty: none.

  /// "https://ops.example:8443": all of it that may be shown.
  std::string origin() const;
  /// For the field Host: without the port where it goes without saying.
  std::string hostField() const;
};

/// Reads a URL of https, or of http to the loopback. Raises `std::invalid_argument` whose text goes on behind
/// a name and shows nothing of the URL: "is not a URL".
WebhookUrl webhookUrlOf(const std::string& text);

/// Whether `host` is an address of this machine that no network reaches, or its usual name.
bool isLoopback(const std::string& host);

/// Why nothing can be posted by https: "there is no TLS on Windows"; empty where it can. One source a system.
extern const char* const kWhyNoHttps;

}  // namespace host

#endif
