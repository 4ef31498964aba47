#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "api/api_service.h"
#include "api/own_endpoints.h"
#include "api/plugin_endpoints.h"
#include "api/session_endpoints.h"
#include "commands/sign_in_command.h"
#include "commands/token_command.h"
#include "identity/admission.h"
#include "identity/token_file.h"
#include "net/local_socket.h"
#include "net/server.h"
#include "options.h"
#include "plugin/hosted_plugin.h"
#include "plugin/library_choice.h"
#include "system/health_monitor.h"
#include "system/process.h"
#include "system/report.h"
#include "system/stop_signal.h"
#include "system/terminal.h"
#include "text.h"

namespace host {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;

/// For a question after the plug-in's status to come back at a stop.
constexpr std::chrono::seconds kPatience{10};

/// Tells no secret: whatever captures the output would have it.
void announceStart(const HostedPlugin& hosted, const std::string& url, const std::string& tokenFile,
                   const Admission& admission) {
  announce("Serving " + wideToUtf8(hosted.description().name) + " on " + url);
  announce("Token file: " + (admission.hasFirstToken() ? tokenFile : "none, the first token was put away"));
}

SimulatorControls::Finder finderIn(const LoadedModule& module) {
  return [&module](const char* name) { return module.findAnywhere(name); };
}

SimulatorControls controlsOf(const LoadedModule& module, bool areWanted) {
  if (!areWanted) return {};
  SimulatorControls controls(finderIn(module));
  if (controls.isEmpty()) report("the module brought no simulated library: there are no simulator controls");
  return controls;
}

/// What is to stay until a failure has been told: its text may be in there.
struct Loaded {
  std::unique_ptr<LoadedModule> library;  ///< Null unless one was chosen.
  std::unique_ptr<LoadedModule> module;
};

/// The chosen library first: the loader then finds it by its name when the module asks for it.
std::optional<LibraryDescription> load(const Options& options, Loaded& loaded) {
  std::optional<LibraryChoice> chosen;
  if (!options.library.empty()) {
    chosen = libraryChoice(options.library);
    loaded.library = std::make_unique<LoadedModule>(chosen->file.u8string(), "library");
  }
  loaded.module = std::make_unique<LoadedModule>(options.module);
  const auto called = libraryOf(*loaded.module);
  if (chosen) requireChosen(*chosen, called);
  if (!called) return {};
  const bool isSimulated = !SimulatorControls(finderIn(*loaded.module)).isEmpty();
  return LibraryDescription{called->name, called->file.u8string(), isSimulated};
}

/// Everything that the host can be asked.
EndpointTable endpointsOf(HostedPlugin& hosted, const HealthMonitor& monitor,
                          const std::optional<LibraryDescription>& library, const Options& options) {
  ovra::service_plugin_interface& plugin = hosted.plugin();
  const std::vector<std::wstring> keys = plugin.getHandledPaths();
  const std::size_t depth = options.limits.bodyDepth;
  EndpointTable table;
  addHealthEndpoints(table, monitor);
  addServiceEndpoint(table, plugin, keys, library);
  addControlEndpoints(table, plugin, keys, controlsOf(hosted.module(), options.simulatorControls), depth);
  addPluginEndpoints(table, plugin, keys, depth);
  return table;
}

/// What was wrong with the files is told, and what was read before stays.
void reload(Admission& admission, Server& server) {
  try {
    admission.reload();
    server.reloadCertificate();
    report("the tokens were read again");
  } catch (const std::exception& failure) {
    report(failure.what());
  }
}

/// With the Unix socket at its usual place unless told otherwise.
Options settled(Options options, const std::string& tokenFile) {
  if (options.hasUnixSocket && options.unixSocket.empty()) options.unixSocket = defaultSocketPath(tokenFile);
  return options;
}

int serve(const Options& options, Loaded& loaded) {
  const std::string tokenFile = options.tokenFile.empty() ? defaultTokenFile() : options.tokenFile;
  Admission admission(tokenFile, {localRoles(), options.certificateRoles}, !options.noTokenInUrl, report);
  const std::optional<LibraryDescription> library = load(options, loaded);
  HostedPlugin hosted(*loaded.module);
  const auto stopSignal = makeStopSignal();
  Server server(settled(options, tokenFile));
  hosted.initialize();
  HealthMonitor monitor(hosted.plugin());
  EndpointTable table = endpointsOf(hosted, monitor, library, options);
  addSessionEndpoints(table, hosted.plugin(), admission, [&server] { return server.url(); });
  const ApiService service(std::move(table), admission.authenticator());
  monitor.start();
  server.start(service);
  announceStart(hosted, server.url(), tokenFile, admission);
  if (!server.socketPath().empty()) announce("Unix socket: " + server.socketPath());
  if (isOutputTerminal()) {
    announce("Sign in: " + signInAddress(server.url(), admission.makeCode({"terminal", Role::kAdminister})));
  }
  stopSignal->wait([&] { reload(admission, server); });
  monitor.announceStop();
  if (!server.drain() || !monitor.stop(kPatience)) {
    // The plug-in cannot be taken down under a call that is still inside it.
    report("requests were still under way after the drain time: leaving them and the plug-in unfinished");
    leaveProcess(kFailure);
  }
  hosted.finish();
  return kSuccess;
}

int run(const std::vector<std::string>& arguments, Loaded& loaded) {
  if (!arguments.empty() && arguments.front() == "token") {
    runTokenCommand({arguments.begin() + 1, arguments.end()}, std::cout, std::cerr);
    return kSuccess;
  }
  if (!arguments.empty() && arguments.front() == "sign-in") {
    runSignInCommand({arguments.begin() + 1, arguments.end()}, std::cout);
    return kSuccess;
  }
  const Options options = parseOptions(arguments);
  if (options.help) std::cout << helpText() << std::flush;
  if (options.version && !options.help) announce(versionText());
  return options.help || options.version ? kSuccess : serve(options, loaded);
}

}  // namespace
}  // namespace host

int main(int argc, char** argv) {
  // The plug-in logs to the wide streams: unsynchronised, they and the narrow ones do not share a C stream,
  // which would take either kind of character and drop the other.
  std::ios::sync_with_stdio(false);
  std::wcout << std::unitbuf;
  host::Loaded loaded;
  try {
    return host::run(host::programArguments(argc, argv), loaded);
  } catch (const host::UsageError& error) {
    host::report(std::string(error.what()) + " (--help tells more)");
    return host::kUsage;
  } catch (const std::exception& failure) {
    host::report(failure.what());
    return host::kFailure;
  } catch (...) {
    host::report("the plug-in failed without a reason");
    return host::kFailure;
  }
}
