#include "host/token_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>

#include "host/token.h"

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t kOwnerDirectory = S_IRWXU;

[[noreturn]] void fail(const std::string& path, const std::string& reason) {
  throw std::runtime_error("token file \"" + path + "\": " + reason);
}

[[noreturn]] void failWithErrno(const std::string& path) {
  fail(path, std::generic_category().message(errno));
}

/// Nothing when there is no such file.
std::optional<std::string> load(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) {
    if (errno == ENOENT) return {};
    failWithErrno(path);
  }
  if (!S_ISREG(status.st_mode)) fail(path, "is not a regular file");
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
    fail(path, "others may read or write it (chmod 600 helps)");
  std::ifstream file(path);
  std::string token;
  if (!std::getline(file, token)) fail(path, "cannot be read or is empty");
  if (!isToken(token)) fail(path, "holds no token");
  return token;
}

void createDirectories(const std::filesystem::path& directory) {
  if (directory.empty() || std::filesystem::exists(directory)) return;
  createDirectories(directory.parent_path());
  if (mkdir(directory.c_str(), kOwnerDirectory) != 0 && errno != EEXIST) failWithErrno(directory.string());
}

/// A file of its own beside the token's, gone at the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& besides) : m_path(besides + ".XXXXXX") {
    m_descriptor = mkstemp(&m_path[0]);
    if (m_descriptor < 0) failWithErrno(besides);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    close(m_descriptor);
    unlink(m_path.c_str());
  }

  void write(const std::string& text) {
    const bool written =
        fchmod(m_descriptor, kOwnerOnly) == 0 &&
        ::write(m_descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
        fsync(m_descriptor) == 0;
    if (!written) failWithErrno(m_path);
  }

  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
  int m_descriptor;
};

/// The file appears whole or not at all, and never over another host's.
void create(const std::string& path) {
  createDirectories(std::filesystem::path(path).parent_path());
  TemporaryFile file(path);
  file.write(makeToken() + "\n");
  if (link(file.path().c_str(), path.c_str()) != 0 && errno != EEXIST) failWithErrno(path);
}

std::optional<std::string> environment(const char* name) {
  const char* const value = std::getenv(name);
  if (!value || value[0] != '/') return {};
  return std::string(value);
}

}  // namespace

std::string defaultTokenFile() {
  if (const auto state = environment("XDG_STATE_HOME")) return *state + "/mirn/token";
  if (const auto home = environment("HOME")) return *home + "/.local/state/mirn/token";
  throw std::runtime_error("no home directory to keep the token in; name a file with --token-file");
}

std::string loadOrCreateToken(const std::string& path) {
  if (const auto token = load(path)) return *token;
  create(path);
  if (const auto token = load(path)) return *token;
  fail(path, "vanished");
}
