#include <exception>
#include <iostream>
#include <memory>

#include "api/api_service.h"
#include "commands/token_command.h"
#include "identity/admission.h"
#include "identity/token_file.h"
#include "net/local_socket.h"
#include "net/server.h"
#include "options.h"
#include "plugin/hosted_plugin.h"
#include "system/process.h"
#include "system/report.h"
#include "system/stop_signal.h"
#include "text.h"

namespace host {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;

/// Tells no secret: whatever captures the output would have it.
void announceStart(const HostedPlugin& hosted, const std::string& url, const std::string& tokenFile,
                   const Admission& admission) {
  announce("Serving " + wideToUtf8(hosted.description().name) + " on " + url);
  announce("Token file: " + (admission.hasFirstToken() ? tokenFile : "none, the first token was put away"));
}

SimulatorControls controlsOf(const LoadedModule& module, bool areWanted) {
  if (!areWanted) return {};
  SimulatorControls controls([&](const char* name) { return module.findAnywhere(name); });
  if (controls.isEmpty()) report("the module brought no simulated library: there are no simulator controls");
  return controls;
}

/// With the Unix socket at its usual place unless told otherwise.
Options settled(Options options, const std::string& tokenFile) {
  if (options.hasUnixSocket && options.unixSocket.empty()) options.unixSocket = defaultSocketPath(tokenFile);
  return options;
}

/// `module` takes the module, which is to stay until a failure has been told: its text may be in there.
int serve(const Options& options, std::unique_ptr<LoadedModule>& module) {
  const std::string tokenFile = options.tokenFile.empty() ? defaultTokenFile() : options.tokenFile;
  const Admission admission(tokenFile, {localRoles(), options.certificateRoles}, !options.noTokenInUrl,
                            report);
  module = std::make_unique<LoadedModule>(options.module);
  HostedPlugin hosted(*module);
  const auto stopSignal = makeStopSignal();
  Server server(settled(options, tokenFile));
  hosted.initialize();
  const ApiService service(hosted.plugin(), admission.authenticator(), options.limits.bodyDepth,
                           controlsOf(hosted.module(), options.simulatorControls));
  server.start(service);
  announceStart(hosted, server.url(), tokenFile, admission);
  if (!server.socketPath().empty()) announce("Unix socket: " + server.socketPath());
  stopSignal->wait();
  if (!server.drain()) {
    // The plug-in cannot be taken down under a request that is still inside it.
    report("requests were still under way after the drain time: leaving them and the plug-in unfinished");
    leaveProcess(kFailure);
  }
  hosted.finish();
  return kSuccess;
}

int run(const std::vector<std::string>& arguments, std::unique_ptr<LoadedModule>& module) {
  if (!arguments.empty() && arguments.front() == "token") {
    runTokenCommand({arguments.begin() + 1, arguments.end()}, std::cout, std::cerr);
    return kSuccess;
  }
  const Options options = parseOptions(arguments);
  if (options.help) std::cout << helpText() << std::flush;
  if (options.version && !options.help) announce(versionText());
  return options.help || options.version ? kSuccess : serve(options, module);
}

}  // namespace
}  // namespace host

int main(int argc, char** argv) {
  // The plug-in logs to the wide streams: unsynchronised, they and the narrow ones do not share a C stream,
  // which would take either kind of character and drop the other.
  std::ios::sync_with_stdio(false);
  std::wcout << std::unitbuf;
  std::unique_ptr<host::LoadedModule> module;
  try {
    return host::run(host::programArguments(argc, argv), module);
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
