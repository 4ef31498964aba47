#include "options.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>
#include <sstream>
#include <thread>

#include "configuration/command_line.h"
#include "configuration/configuration_file.h"
#include "configuration/platform_options.h"
#include "plugin_version.h"
#include "system/stop_signal.h"

namespace host {

namespace {

void judgeTls(const Options& options) {
  if (options.tlsCertificate.empty() != options.tlsKey.empty()) {
    throw UsageError("the options '--tls-certificate' and '--tls-key' go together");
  }
  if (!options.tlsClientAuthorities.empty() && options.tlsCertificate.empty()) {
    throw UsageError("the option '--tls-client-ca' needs '--tls-certificate'");
  }
  if (!options.certificateRoles.empty() && options.tlsClientAuthorities.empty()) {
    throw UsageError("the option '--tls-client' needs '--tls-client-ca'");
  }
}

void judge(const Options& options) {
  if (options.module.empty()) throw UsageError("the option '--module' is required");
  judgeTls(options);
  judgeReach(options, options.address);
}

/// With what follows from the rest.
Options completed(Options options) {
  options.hasUnixSocket = options.unixSocket != "off";
  if (!options.hasUnixSocket) options.unixSocket.clear();
  options.needsUnixSocket = !options.unixSocket.empty();
  if (options.threads == 0) options.threads = std::max(1U, std::thread::hardware_concurrency());
  return options;
}

Options optionsOf(const std::vector<Setting>& settings) {
  Options options;
  applySettings(settings, options);
  return options;
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
  const std::vector<Setting> line = readCommandLine(arguments);
  Options options = optionsOf(line);
  if (options.help || options.version) return options;
  if (!options.configurationFile.empty()) {
    const std::vector<Setting> file = readConfigurationFile(options.configurationFile);
    optionsOf(file);  // what is wrong there is told even where the command line goes ahead of it
    options = optionsOf(merged(file, line));
  }
  judge(options);
  return completed(std::move(options));
}

Options configuredOptions(const std::string& path) {
  if (path.empty()) return {};
  return completed(optionsOf(readConfigurationFile(path)));
}

void judgeReach(const Options& options, const std::string& address) {
  if (boost::asio::ip::make_address(address).is_loopback()) return;
  if (!options.tlsCertificate.empty() || options.insecure) return;
  throw UsageError(
      "the address " + address +
      " can be reached from other machines, and there is no encryption: say --insecure to do it");
}

std::string helpText() {
  std::ostringstream text;
  text << "Usage: mirn-host --module FILE [options]\n"
          "       mirn-host --config FILE [options]\n"
          "       mirn-host token add|list|revoke ... (mirn-host token --help tells more)\n"
       << platformCommandHelp() << "Serves a plug-in module over HTTP until it gets " << stopSignalNames()
       << ".\n"
       << commandLineHelp()
       << "\nExit status: 0 after an orderly stop, 1 when it could not start or stop, 2 for a wrong command "
          "line or\nconfiguration file.\n";
  return text.str();
}

std::string versionNumber() {
  std::ostringstream text;
  text << MIRN_VERSION_MAJOR << '.' << MIRN_VERSION_MINOR << '.' << MIRN_VERSION_PATCH << '.'
       << MIRN_VERSION_BUILD;
  return text.str();
}

std::string versionText() { return "mirn-host " + versionNumber(); }

}  // namespace host
