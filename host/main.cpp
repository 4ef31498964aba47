#include <chrono>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

#include "api/api_service.h"
#include "api/own_endpoints.h"
#include "api/plugin_endpoints.h"
#include "api/session_endpoints.h"
#include "bundle/bundle_endpoint.h"
#include "bundle/bundled_configuration.h"
#include "commands/check_files.h"
#include "commands/exit_status.h"
#include "commands/service_command.h"
#include "commands/sign_in_command.h"
#include "commands/token_command.h"
#include "console/console_endpoints.h"
#include "identity/admission.h"
#include "identity/base64url.h"
#include "identity/token_file.h"
#include "insight/change_planning.h"
#include "insight/insight_endpoints.h"
#include "insight/insight_witness.h"
#include "metrics/metrics_endpoint.h"
#include "net/handed_sockets.h"
#include "net/local_socket.h"
#include "net/server.h"
#include "notifications/notifications.h"
#include "openapi/openapi_endpoints.h"
#include "options.h"
#include "plugin/hosted_plugin.h"
#include "plugin/library_choice.h"
#include "process_start.h"
#include "revisions/revisions.h"
#include "system/health_monitor.h"
#include "system/memory.h"
#include "system/process.h"
#include "system/report.h"
#include "system/service_manager.h"
#include "system/stop_signal.h"
#include "system/terminal.h"
#include "text.h"
#include "whatif/what_if_endpoint.h"

namespace host {
namespace {

/// For a question after the plug-in's status to come back at a stop.
constexpr std::chrono::seconds kPatience{10};

/// For what comes behind it.
constexpr std::chrono::seconds kLastSteps{10};

constexpr std::size_t kMaskKeyBytes = 32;

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

/// Null when the plug-in tells no revision.
std::unique_ptr<Revisions> revisionsOf(ovra::service_plugin_interface& plugin, const Limits& limits) {
  auto* const watched = dynamic_cast<ovra::watched_plugin_1*>(&plugin);
  if (watched == nullptr) return {};
  return std::make_unique<Revisions>(*watched, limits.keptBytes, limits.waitingForChange);
}

/// A plug-in at work, and who knows what of it.
struct Served {
  HostedPlugin& hosted;
  const std::vector<std::wstring> keys;
  const HealthMonitor& monitor;
  const std::unique_ptr<Revisions> revisions;  ///< Null where it tells none.
  const std::optional<LibraryDescription> library;
  const std::shared_ptr<InsightDesk> desk;  ///< Null where insight cannot read it.
};

/// Everything that the host can be asked.
EndpointTable endpointsOf(const Served& served, const Options& options) {
  ovra::service_plugin_interface& plugin = served.hosted.plugin();
  const JsonBounds bodies{options.limits.bodyDepth, options.limits.bodyValues};
  EndpointTable table;
  addHealthEndpoints(table, served.monitor);
  addServiceEndpoint(table, plugin, served.keys, served.library);
  addControlEndpoints(table, plugin, served.keys,
                      controlsOf(served.hosted.module(), options.simulatorControls), bodies);
  addPluginEndpoints(table, plugin, served.keys, bodies, served.revisions.get(), changePlansOf(served.desk));
  addConsoleEndpoints(table, consoleFiles());
  if (served.desk) addInsightEndpoints(table, served.desk, options.limits.listeners);
  if (served.desk) addWhatIfEndpoint(table, served.desk);
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

/// Empty where nothing is to be kept.
std::filesystem::path historyOf(const Options& options, const std::string& tokenFile) {
  if (options.history == kNoHistory) return {};
  if (!options.history.empty()) return std::filesystem::u8path(options.history);
  return std::filesystem::u8path(tokenFile).replace_filename("history.db");
}

/// The host's files of this machine stand there.
std::vector<std::string> foldersOf(const Options& options, const std::string& tokenFile) {
  std::vector<std::string> folders;
  for (const auto& file : {std::filesystem::u8path(tokenFile), historyOf(options, tokenFile),
                           std::filesystem::u8path(options.configurationFile)}) {
    folders.push_back(file.parent_path().u8string());
  }
  return folders;
}

std::shared_ptr<BundleSubject> bundleSubjectOf(const Served& served, const Options& options,
                                               const std::string& tokenFile) {
  auto subject = std::make_shared<BundleSubject>(BundleSubject{served.hosted.plugin()});
  subject->watched = dynamic_cast<ovra::watched_plugin_1*>(&served.hosted.plugin());
  if (served.desk) subject->views = served.desk->views;
  subject->hostVersion = versionNumber();
  if (served.library) {
    subject->library = {{"name", served.library->name}, {"simulated", served.library->isSimulated}};
  }
  subject->configuration = bundledConfiguration(options);
  subject->folders = foldersOf(options, tokenFile);
  subject->maskKey = randomText(kMaskKeyBytes);
  return subject;
}

/// Those that tell of all the others, which come last therefore.
void addEndpointsOfAll(EndpointTable& table, const std::shared_ptr<BundleSubject>& subject) {
  addBundleEndpoint(table, subject);
  addOpenApiEndpoints(table, subject->plugin);
  subject->operations.learn(table);
}

/// With the Unix socket at its usual place unless told otherwise.
Options settled(Options options, const std::string& tokenFile) {
  if (options.hasUnixSocket && options.unixSocket.empty()) options.unixSocket = defaultSocketPath(tokenFile);
  return options;
}

int serve(const Options& options, Loaded& loaded) {
  const HandedSockets handed = takeHandedSockets();  // first of all: modules may start threads
  const std::string tokenFile = options.tokenFile.empty() ? defaultTokenFile() : options.tokenFile;
  Admission admission(tokenFile, {localRoles(), options.certificateRoles}, !options.noTokenInUrl, report);
  const std::optional<LibraryDescription> library = load(options, loaded);
  HostedPlugin hosted(*loaded.module);
  const auto stopSignal = makeStopSignal();
  Server server(settled(options, tokenFile), handed);
  hosted.initialize();
  HealthMonitor monitor(hosted.plugin());
  const std::vector<std::wstring> keys = hosted.plugin().getHandledPaths();
  const Served served{hosted,  keys,
                      monitor, revisionsOf(hosted.plugin(), options.limits),
                      library, insightDeskOf(hosted.plugin(), keys, historyOf(options, tokenFile))};
  const auto witness = witnessOf(served.desk);
  EndpointTable table = endpointsOf(served, options);
  addSessionEndpoints(table, hosted.plugin(), admission, [&server] { return server.url(); });
  RequestCounts requests;
  addMetricsEndpoint(table, {versionNumber(), hosted.plugin(), served.library, monitor, requests,
                             served.revisions.get(), served.desk ? served.desk->metrics : nullptr});
  addEndpointsOfAll(table, bundleSubjectOf(served, options, tokenFile));
  requests.know(table);
  const ApiService service(std::move(table), admission.authenticator(),
                           {options.limits.targetSegments, options.limits.targetParameters}, witness.get());
  monitor.start();
  const auto notifier = startNotifications(
      options.notifications, served.desk ? served.desk->service : nullptr, "mirn-host/" + versionNumber());
  if (served.desk) beginWatch(*served.desk);
  giveMemoryBack();  // reading and telling a machine for the first time takes more than is kept of it
  if (beatInterval().count() > 0) server.beatEvery(beatInterval(), tellAlive);
  server.start(service, &requests);
  announceStart(hosted, server.url(), tokenFile, admission);
  if (!server.socketPath().empty()) announce("Unix socket: " + server.socketPath());
  if (isOutputTerminal()) {
    announce("Sign in: " + signInAddress(server.url(), admission.makeCode({"terminal", Role::kAdminister})));
  }
  const std::string status = "Serving on " + server.url();
  tellReady(status);
  stopSignal->wait([&] {
    tellReloading();
    reload(admission, server);
    tellReady(status);
  });
  tellStopping(options.limits.drainTime + kPatience + kLastSteps);
  monitor.announceStop();
  if (served.desk) announceStop(*served.desk);
  stopNotifications(notifier);
  if (!server.drain() || !monitor.stop(kPatience)) {
    // The plug-in cannot be taken down under a call that is still inside it.
    report("requests were still under way after the drain time: leaving them and the plug-in unfinished");
    tellLeaving(kFailure);
    leaveProcess(kFailure);
  }
  if (served.revisions) served.revisions->watch.announceStop();
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
  if (!arguments.empty() && arguments.front() == "service") {
    const auto serveWith = [&loaded](const Options& options) { return serve(options, loaded); };
    return runServiceCommand({arguments.begin() + 1, arguments.end()}, serveWith, std::cout);
  }
  const Options options = parseOptions(arguments);
  if (options.help) std::cout << helpText() << std::flush;
  if (options.version && !options.help) announce(versionText());
  if (options.help || options.version) return kSuccess;
  if (!options.checkOnly) return serve(options, loaded);
  checkFiles(options);
  announce("The configuration is good");
  return kSuccess;
}

}  // namespace
}  // namespace host

int main(int argc, char** argv) {
  // The plug-in logs to the wide streams: unsynchronised, they and the narrow ones do not share a C stream,
  // which would take either kind of character and drop the other.
  std::ios::sync_with_stdio(false);
  std::wcout << std::unitbuf;
  host::Loaded loaded;
  return host::statusOf([&] { return host::run(programArguments(argc, argv), loaded); });
}
