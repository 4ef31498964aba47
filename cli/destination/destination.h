#ifndef MIRN_CLI_DESTINATION_DESTINATION_H
#define MIRN_CLI_DESTINATION_DESTINATION_H

#include <string>

namespace mirnctl {

/// Where a service is, and who asks it. Plain value.
struct Destination {
  bool isSecure = false;
  std::string host;  ///< A name or an address, without brackets; empty for a Unix socket.
  std::string port;
  std::string socketPath;  ///< Of a Unix socket; empty for TCP.
  std::string caFile;      ///< Whom to trust besides the system's own list; empty: nobody.
  std::string token;       ///< Empty: none is sent.
  std::string bundle{};    ///< A file that answers in the place of a service; empty: none.

  /// As the field Host has it.
  std::string authority() const;
  /// For people, and for the program that prints a request.
  std::string url() const;
};

/// From "http://HOST[:PORT]", "https://HOST[:PORT]", "HOST[:PORT]" or "unix:PATH". Raises `Failure`.
Destination destinationOf(const std::string& text);

}  // namespace mirnctl

#endif
