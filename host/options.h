#ifndef MIRN_HOST_OPTIONS_H
#define MIRN_HOST_OPTIONS_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "identity/role.h"
#include "notifications/notification_targets.h"
#include "service_limits.h"

namespace host {

/// As `Options::history`: nothing is kept.
constexpr char kNoHistory[] = "off";

/// What the command line and the configuration file say.
struct Options {
  std::string module;
  std::string library;  ///< A name or a path; empty: the one that the loader finds.
  std::string address = "127.0.0.1";
  std::uint16_t port = 8080;             ///< 0: any free one.
  std::vector<std::string> serverNames;  ///< Under which clients may ask, besides the address.
  std::string tokenFile;                 ///< Empty: the default one.
  std::string history;                   ///< A path, or `kNoHistory`; empty: beside the token.
  bool insecure = false;
  std::string unixSocket;        ///< Empty: none, or the usual one, which `main` knows.
  bool needsUnixSocket = false;  ///< It was asked for by name.
  bool hasUnixSocket = true;
  std::string tlsCertificate;  ///< Empty: no TLS.
  std::string tlsKey;
  std::string tlsClientAuthorities;
  std::map<std::string, Role> certificateRoles;  ///< By the subject of a client's certificate.
  bool noTokenInUrl = false;                     ///< The parameter `access_token` is not taken.
  bool logRequests = false;
  bool simulatorControls = false;
  std::size_t threads = 0;  ///< Of input and output; 0: one a core.
  Limits limits;
  NotificationTargets notifications;

  std::string configurationFile;  ///< Empty: none.
  bool checkOnly = false;         ///< To say whether the host could start.
  bool help = false;              ///< Nothing else is judged then, nor with `version`.
  bool version = false;
};

/// A command line or configuration that makes no sense; the text says why.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// `arguments` are what stands behind the program's name. What they say goes ahead of the file that they
/// name. Raises `UsageError`.
Options parseOptions(const std::vector<std::string>& arguments);

/// What the configuration file `path` says by itself, whether or not a host could start with it; the defaults
/// where `path` is empty. Raises `UsageError`.
Options configuredOptions(const std::string& path);

/// Others than this machine are served in clear only where that was asked for. Raises `UsageError`.
void judgeReach(const Options& options, const std::string& address);

std::string helpText();
/// Its number, such as "1.2.3.4".
std::string versionNumber();
std::string versionText();

}  // namespace host

#endif
