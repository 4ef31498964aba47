#include "commands/check_files.h"

#include <filesystem>
#include <stdexcept>

#include "net/tls.h"
#include "notifications/notifications.h"
#include "plugin/library_choice.h"

namespace host {

namespace {

namespace fs = std::filesystem;

void requireFile(const fs::path& file, const std::string& option) {
  std::error_code error;
  if (fs::is_regular_file(file, error)) return;
  throw UsageError("the option '--" + option + "' names no file: " + file.u8string());
}

void checkCertificate(const Options& options) try {
  if (!options.tlsCertificate.empty()) {
    makeTls({options.tlsCertificate, options.tlsKey, options.tlsClientAuthorities});
  }
} catch (const std::runtime_error& failure) {
  throw UsageError(failure.what());
}

fs::path fileOfLibrary(const std::string& library) try {
  return libraryChoice(library).file;
} catch (const std::runtime_error& failure) {
  throw UsageError(failure.what());
}

void checkTargets(const Options& options) try {
  checkNotifications(options.notifications);
} catch (const std::runtime_error& failure) {
  throw UsageError(failure.what());
}

}  // namespace

void checkFiles(const Options& options) {
  requireFile(fs::u8path(options.module), "module");
  if (!options.library.empty()) requireFile(fileOfLibrary(options.library), "library");
  checkCertificate(options);
  checkTargets(options);
}

}  // namespace host
