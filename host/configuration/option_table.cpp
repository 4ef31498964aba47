#include "configuration/option_table.h"

#include <algorithm>
#include <boost/asio/ip/address.hpp>

#include "configuration/notification_options.h"
#include "configuration/platform_options.h"
#include "identity/token_file.h"

namespace host {

namespace {

Option addressOption() {
  Option option = textOption("address", "IP", &Options::address,
                             "where to listen; others than the loopback need TLS or --insecure");
  option.range = "an IP address";
  option.take = [range = option.range](Options& options, const std::string& text) {
    boost::system::error_code error;
    boost::asio::ip::make_address(text, error);
    if (error) throw ValueError("is not " + range);
    options.address = text;
  };
  return option;
}

std::vector<Option> serviceOptions() {
  return {
      textOption("module", "FILE", &Options::module, "the plug-in module to serve"),
      textOption("library", "NAME|PATH", &Options::library,
                 "the storage library that the module is to call; otherwise the one that the loader finds"),
      addressOption(),
      portOption("port", &Options::port, "where to listen; 0 takes any free port"),
      listOption("server-name", "NAME", &Options::serverNames,
                 "a name under which clients may ask for this host, besides the address"),
      switchOption("insecure", &Options::insecure, "listen on any address, without encryption"),
      textOption("token-file", "FILE", &Options::tokenFile,
                 "where the token is kept, made at the first start; otherwise " + defaultTokenFileText()),
      textOption("history", "FILE|off", &Options::history,
                 "where it is kept what has happened; otherwise history.db beside the token"),
      switchOption("no-token-in-url", &Options::noTokenInUrl,
                   "take tokens in the Authorization field only, not as access_token"),
      switchOption("log-requests", &Options::logRequests, "a line on standard error for each request"),
      switchOption("simulator-controls", &Options::simulatorControls,
                   "let clients break disks and move the clock of a simulated library"),
  };
}

std::vector<Option> boundOptions() {
  return {
      countOption("threads", &Options::threads, 0, "for input and output; 0 is one a core"),
      countOption("read-workers", &Limits::readWorkers, 1, "threads for calls that change nothing"),
      countOption("change-workers", &Limits::changeWorkers, 1, "threads for calls that change something"),
      countOption("max-waiting", &Limits::waitingCalls, 0, "requests that wait for a thread of a kind"),
      countOption("max-waiting-of-one", &Limits::waitingCallsOfOne, 0, "of those, of one identity"),
      countOption("max-connections", &Limits::connections, 1, "at once; the longest idle one makes place"),
      countOption("max-connections-of-one", &Limits::connectionsOfOne, 1,
                  "of those, of one address other than the loopback"),
      countOption("max-pipelined", &Limits::pipelinedRequests, 1,
                  "requests that are sent ahead of their answers"),
      countOption("max-header", &Limits::headerBytes, 256, "bytes of a request's header"),
      countOption("max-header-line", &Limits::headerLineBytes, 64, "bytes of a header's field"),
      countOption("max-fields", &Limits::headerFields, 1, "fields of a request's header"),
      countOption("max-target", &Limits::targetBytes, 64, "bytes of a request's target"),
      countOption("max-segments", &Limits::targetSegments, 1, "segments of a target's path"),
      countOption("max-parameters", &Limits::targetParameters, 0, "parameters of a target's query"),
      countOption("max-body", &Limits::bodyBytes, 0, "bytes of a request's body"),
      countOption("max-depth", &Limits::bodyDepth, 1, "nesting of a request's body"),
      countOption("max-values", &Limits::bodyValues, 1, "values in a request's body"),
      countOption("max-kept", &Limits::keptBytes, 0, "bytes of answers that are kept; 0 makes each anew"),
      countOption("max-watching", &Limits::waitingForChange, 0, "requests that wait for an answer to change"),
      countOption("max-listeners", &Limits::listeners, 0, "clients that listen to what happens"),
      timeOption("header-timeout", &Limits::headerTime, "to read a header"),
      timeOption("body-timeout", &Limits::bodyTime, "to read a body"),
      timeOption("write-timeout", &Limits::writeTime, "to write an answer"),
      timeOption("idle-timeout", &Limits::idleTime, "to wait for the next request"),
      timeOption("drain-timeout", &Limits::drainTime, "to end the requests under way at a stop"),
  };
}

std::vector<Option> programOptions() {
  std::vector<Option> options{
      textOption("config", "FILE", &Options::configurationFile,
                 "take the options from this file, too; what the command line says goes ahead"),
      switchOption("check-config", &Options::checkOnly,
                   "say whether the host could start with these options, and exit with status 0 or 2"),
      switchOption("help", &Options::help, "show this and exit"),
      switchOption("version", &Options::version, "show the version and exit"),
  };
  for (Option& option : options) option.group = OptionGroup::kProgram;
  return options;
}

std::vector<Option> makeTable() {
  std::vector<Option> table;
  for (const auto rows :
       {serviceOptions, platformOptions, boundOptions, notificationOptions, programOptions}) {
    for (Option& row : rows()) table.push_back(std::move(row));
  }
  return table;
}

}  // namespace

const std::vector<Option>& optionTable() {
  static const std::vector<Option> kTable = makeTable();
  return kTable;
}

const Option* findOption(const std::string& name) {
  const auto& table = optionTable();
  const auto found =
      std::find_if(table.begin(), table.end(), [&](const Option& option) { return option.name == name; });
  return found == table.end() ? nullptr : &*found;
}

std::string headingOf(OptionGroup group) {
  switch (group) {
    case OptionGroup::kService:
      return "Options";
    case OptionGroup::kBounds:
      return "Threads and bounds";
    case OptionGroup::kNotifications:
      return "Notifications, in the configuration file only";
    case OptionGroup::kProgram:
      return "The program itself";
  }
  return {};
}

}  // namespace host
