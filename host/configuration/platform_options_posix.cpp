#include "configuration/platform_options.h"

namespace host {

namespace {

/// "ROLE:SUBJECT".
void takeClient(Options& options, const std::string& text) {
  const std::size_t colon = text.find(':');
  const auto role = roleOf(text.substr(0, colon));
  const std::string subject = colon == std::string::npos ? "" : text.substr(colon + 1);
  if (!role || subject.empty()) throw ValueError("is not ROLE:SUBJECT");
  if (!options.certificateRoles.emplace(subject, *role).second) throw ValueError("names a subject twice");
}

Option clientOption() {
  Option option;
  option.name = "tls-client";
  option.argument = "ROLE:SUBJECT";
  option.help = "what the client with this certificate may, such as observe:CN=monitor,O=Site";
  option.mayRepeat = true;
  option.take = takeClient;
  return option;
}

}  // namespace

std::vector<Option> platformOptions() {
  return {
      textOption("unix-socket", "FILE", &Options::unixSocket,
                 "where else to listen, for users of this machine, or off; otherwise host.sock in /run/mirn, "
                 "$XDG_RUNTIME_DIR/mirn or beside the token"),
      textOption("tls-certificate", "FILE", &Options::tlsCertificate,
                 "PEM, with its chain; serve by TLS 1.2 and 1.3 instead of in clear"),
      textOption("tls-key", "FILE", &Options::tlsKey, "PEM, the certificate's private key"),
      textOption("tls-client-ca", "FILE", &Options::tlsClientAuthorities,
                 "PEM, whose certificates of clients are trusted"),
      clientOption(),
  };
}

std::string platformCommandHelp() {
  return "       mirn-host sign-in ...               (mirn-host sign-in --help tells more)\n";
}

std::string whyMissing(const std::string&) { return {}; }

}  // namespace host
