#include "options.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>
#include <boost/program_options.hpp>
#include <cmath>
#include <limits>
#include <sstream>
#include <thread>

#include "identity/token_file.h"
#include "platform_options.h"
#include "plugin_version.h"
#include "system/stop_signal.h"

namespace host {

namespace {

namespace po = boost::program_options;

constexpr std::int64_t kLargest = 1 << 30;

/// A number from `min` to `kLargest`; unsigned types alone would take "-1" as a large one.
po::typed_value<std::int64_t>* number(const char* name, std::size_t& target, std::int64_t min) {
  return po::value<std::int64_t>()
      ->value_name("N")
      ->default_value(static_cast<std::int64_t>(target))
      ->notifier([&target, name, min](std::int64_t value) {
        if (value < min || value > kLargest) {
          throw UsageError("the option '--" + std::string(name) + "' is not from " + std::to_string(min) +
                           " to " + std::to_string(kLargest));
        }
        target = static_cast<std::size_t>(value);
      });
}

po::typed_value<double>* seconds(const char* name, std::chrono::milliseconds& target) {
  constexpr double kMillisecondsPerSecond = 1000;
  constexpr double kLongest = 86400;
  return po::value<double>()
      ->value_name("SECONDS")
      ->default_value(static_cast<double>(target.count()) / kMillisecondsPerSecond)
      ->notifier([&target, name](double value) {
        if (!(value > 0 && value <= kLongest)) {
          throw UsageError("the option '--" + std::string(name) + "' is not from 0 to 86400 seconds");
        }
        target = std::chrono::milliseconds(std::max(1L, std::lround(value * kMillisecondsPerSecond)));
      });
}

po::typed_value<std::int64_t>* port(std::uint16_t& target) {
  return po::value<std::int64_t>()->value_name("PORT")->default_value(target)->notifier(
      [&target](std::int64_t value) {
        if (value < 0 || value > std::numeric_limits<std::uint16_t>::max()) {
          throw UsageError("the option '--port' is not from 0 to 65535");
        }
        target = static_cast<std::uint16_t>(value);
      });
}

po::options_description describe(Options& options) {
  Limits& limits = options.limits;
  po::options_description general("Options");
  general.add_options()                                                                                     //
      ("module", po::value(&options.module)->value_name("FILE"), "the plug-in module to serve")             //
      ("library", po::value(&options.library)->value_name("NAME|PATH"),                                     //
       "the storage library that the module is to call; otherwise the one that the loader finds")           //
      ("address", po::value(&options.address)->value_name("IP")->default_value(options.address),            //
       "where to listen; others than the loopback need TLS or --insecure")                                  //
      ("port", port(options.port), "where to listen; 0 takes any free port")                                //
      ("server-name", po::value(&options.serverNames)->value_name("NAME")->composing(),                     //
       "a name under which clients may ask for this host, besides the address; may repeat")                 //
      ("insecure", po::bool_switch(&options.insecure), "listen on any address, without encryption")         //
      ("token-file", po::value(&options.tokenFile)->value_name("FILE"),                                     //
       ("where the token is kept, made at the first start; otherwise " + defaultTokenFileText()).c_str())   //
      ("no-token-in-url", po::bool_switch(&options.noTokenInUrl),                                           //
       "take tokens in the Authorization field only, not as access_token")                                  //
      ("log-requests", po::bool_switch(&options.logRequests), "a line on standard error for each request")  //
      ("simulator-controls", po::bool_switch(&options.simulatorControls),                                   //
       "let clients break disks and move the clock of a simulated library")                                 //
      ("help", po::bool_switch(&options.help), "show this and exit")                                        //
      ("version", po::bool_switch(&options.version), "show the version and exit");
  addPlatformOptions(general, options);
  po::options_description bounds("Threads and bounds");
  bounds.add_options()                                                                             //
      ("threads", number("threads", options.threads, 0), "for input and output; 0 is one a core")  //
      ("read-workers", number("read-workers", limits.readWorkers, 1),
       "threads for calls that change nothing")  //
      ("change-workers", number("change-workers", limits.changeWorkers, 1),
       "threads for calls that change something")  //
      ("max-waiting", number("max-waiting", limits.waitingCalls, 0),
       "requests that wait for a thread of a kind")  //
      ("max-waiting-of-one", number("max-waiting-of-one", limits.waitingCallsOfOne, 0),
       "of those, of one identity")  //
      ("max-connections", number("max-connections", limits.connections, 1),
       "at once; the longest idle one makes place")  //
      ("max-connections-of-one", number("max-connections-of-one", limits.connectionsOfOne, 1),
       "of those, of one address other than the loopback")  //
      ("max-pipelined", number("max-pipelined", limits.pipelinedRequests, 1),
       "requests that are sent ahead of their answers")                                             //
      ("max-header", number("max-header", limits.headerBytes, 256), "bytes of a request's header")  //
      ("max-header-line", number("max-header-line", limits.headerLineBytes, 64),
       "bytes of a header's field")                                                                 //
      ("max-fields", number("max-fields", limits.headerFields, 1), "fields of a request's header")  //
      ("max-target", number("max-target", limits.targetBytes, 64), "bytes of a request's target")   //
      ("max-body", number("max-body", limits.bodyBytes, 0), "bytes of a request's body")            //
      ("max-depth", number("max-depth", limits.bodyDepth, 1), "nesting of a request's body")        //
      ("header-timeout", seconds("header-timeout", limits.headerTime), "to read a header")          //
      ("body-timeout", seconds("body-timeout", limits.bodyTime), "to read a body")                  //
      ("write-timeout", seconds("write-timeout", limits.writeTime), "to write an answer")           //
      ("idle-timeout", seconds("idle-timeout", limits.idleTime), "to wait for the next request")    //
      ("drain-timeout", seconds("drain-timeout", limits.drainTime),
       "to end the requests under way at a stop");
  return general.add(bounds);
}

/// "ROLE:SUBJECT".
void takeClient(Options& options, const std::string& text) {
  const std::size_t colon = text.find(':');
  const auto role = roleOf(text.substr(0, colon));
  const std::string subject = colon == std::string::npos ? "" : text.substr(colon + 1);
  if (!role || subject.empty()) throw UsageError("the option '--tls-client' is not ROLE:SUBJECT");
  if (!options.certificateRoles.emplace(subject, *role).second) {
    throw UsageError("the option '--tls-client' names a subject twice");
  }
}

void judgeTls(Options& options) {
  if (options.tlsCertificate.empty() != options.tlsKey.empty()) {
    throw UsageError("the options '--tls-certificate' and '--tls-key' go together");
  }
  for (const std::string& client : options.tlsClients) takeClient(options, client);
  if (!options.tlsClientAuthorities.empty() && options.tlsCertificate.empty()) {
    throw UsageError("the option '--tls-client-ca' needs '--tls-certificate'");
  }
  if (!options.tlsClients.empty() && options.tlsClientAuthorities.empty()) {
    throw UsageError("the option '--tls-client' needs '--tls-client-ca'");
  }
}

void judge(Options& options) {
  if (options.module.empty()) throw UsageError("the option '--module' is required");
  boost::system::error_code error;
  const auto address = boost::asio::ip::make_address(options.address, error);
  if (error) throw UsageError("the option '--address' is not an IP address");
  judgeTls(options);
  if (!address.is_loopback() && options.tlsCertificate.empty() && !options.insecure) {
    throw UsageError(
        "the address " + options.address +
        " can be reached from other machines, and there is no encryption: say --insecure to do it");
  }
  options.hasUnixSocket = options.unixSocket != "off";
  if (!options.hasUnixSocket) options.unixSocket.clear();
  options.needsUnixSocket = !options.unixSocket.empty();
  if (options.threads == 0) options.threads = std::max(1U, std::thread::hardware_concurrency());
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments) {
  Options options;
  try {
    // Long options only, and in full: what a script says today means the same when an option is added.
    constexpr auto kStyle = po::command_line_style::allow_long | po::command_line_style::long_allow_adjacent |
                            po::command_line_style::long_allow_next;
    po::variables_map values;
    po::store(
        po::command_line_parser(arguments).options(describe(options)).positional({}).style(kStyle).run(),
        values);
    po::notify(values);
  } catch (const po::unknown_option& error) {
    throw UsageError(error.what() + whyMissing(error.get_option_name()));
  } catch (const po::error& error) {
    throw UsageError(error.what());
  }
  if (!options.help && !options.version) judge(options);
  return options;
}

std::string helpText() {
  Options defaults;
  std::ostringstream text;
  text << "Usage: mirn-host --module FILE [options]\n"
          "       mirn-host token add|list|revoke ... (mirn-host token --help tells more)\n"
          "       mirn-host sign-in ...               (mirn-host sign-in --help tells more)\n"
          "Serves a plug-in module over HTTP until it gets "
       << stopSignalNames() << ".\n\n"
       << describe(defaults)
       << "\nExit status: 0 after an orderly stop, 1 when it could not start or stop, 2 for a wrong command "
          "line.\n";
  return text.str();
}

std::string versionText() {
  std::ostringstream text;
  text << "mirn-host " << MIRN_VERSION_MAJOR << '.' << MIRN_VERSION_MINOR << '.' << MIRN_VERSION_PATCH << '.'
       << MIRN_VERSION_BUILD;
  return text.str();
}

}  // namespace host
