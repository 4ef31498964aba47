#include <filesystem>

#include "commands/check_files.h"
#include "commands/exit_status.h"
#include "commands/first_configuration.h"
#include "commands/kept_options.h"
#include "commands/service_command.h"
#include "plugin/library_choice.h"
#include "system/event_log_windows.h"
#include "system/process_windows.h"
#include "system/service_control_windows.h"
#include "system/service_manager_windows.h"
#include "system/state_folder_windows.h"

namespace host {

namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

constexpr char kUsageText[] =
    "Usage: mirn-host service install [options of mirn-host]\n"
    "       mirn-host service remove\n"
    "Has the service control manager run the host from the start of the machine on, with\n"
    "these options; without any, with those in host.conf in Mirn in %ProgramData%, which is\n"
    "made when it is missing. Tokens are kept there, too, and stay when the service is\n"
    "removed. `net start mirn-host` starts it.\n";

/// Says it where it was not said.
Words withConfiguration(const Words& options, const fs::path& state) {
  if (!options.empty()) return keptOptions(options);
  const fs::path file = state / "host.conf";
  const fs::path module = programFile().parent_path() / "mirn_plugin.dll";
  writeFirstConfiguration(file, firstConfiguration(module, librariesFolder()));
  return {"--config=" + file.u8string()};
}

/// As the service has them, which finds its files from the folder of its state.
Options serviceOptions(const Words& words) {
  const fs::path state = stateFolder();
  fs::current_path(state);
  Options options = parseOptions(words);
  if (options.help || options.version || options.checkOnly) {
    throw UsageError("a service neither helps nor checks: it serves");
  }
  if (options.tokenFile.empty()) options.tokenFile = (state / "token").u8string();
  return options;
}

int install(const Words& options, std::ostream& out) {
  const ServiceList services;
  services.requireNone();
  const fs::path state = stateFolder();
  makeStateFolder(state);
  Words words = withConfiguration(options, state);
  checkFiles(serviceOptions(words));
  registerEventSource();
  words.insert(words.begin(), {"service", "run"});
  services.add(commandLineOf(programFile(), words));
  out << "Installed; its state is in " << state.u8string() << '\n';
  return kSuccess;
}

int remove(std::ostream& out) {
  ServiceList().remove();
  unregisterEventSource();
  out << "Removed; its state stays in " << stateFolder().u8string() << '\n';
  return kSuccess;
}

}  // namespace

int runServiceCommand(const Words& arguments, const std::function<int(const Options&)>& serve,
                      std::ostream& out) {
  const std::string verb = arguments.empty() ? "" : arguments.front();
  const Words rest(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end());
  if (verb == "install") return install(rest, out);
  if (verb == "remove" && rest.empty()) return remove(out);
  if (verb == "run") {
    return runAsService([&] { return statusOf([&] { return serve(serviceOptions(rest)); }); });
  }
  if (verb != "--help" || !rest.empty()) {
    throw UsageError("it is \"service install OPTIONS\" or \"service remove\"");
  }
  out << kUsageText;
  return kSuccess;
}

}  // namespace host
