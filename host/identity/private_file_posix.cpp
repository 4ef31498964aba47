#include "identity/private_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "system/system_reason.h"

namespace host {

namespace {

constexpr mode_t kOwnerOnly = S_IRUSR | S_IWUSR;
constexpr mode_t kOwnerDirectory = S_IRWXU;

/// A file of its own beside the one to be, gone at the end.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& besides) : m_path(besides + ".XXXXXX") {
    m_descriptor = mkstemp(&m_path[0]);
    if (m_descriptor < 0) throw lastSystemFailure();
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
    if (!written) throw lastSystemFailure();
  }

  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
  int m_descriptor;
};

}  // namespace

const char* const kPrivacyRemedy = "chmod 600";

bool othersMayReach(const std::filesystem::path& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) throw lastSystemFailure();
  return (status.st_mode & (S_IRWXG | S_IRWXO)) != 0;
}

void makePrivateDirectory(const std::filesystem::path& directory) {
  if (mkdir(directory.c_str(), kOwnerDirectory) != 0 && errno != EEXIST) throw lastSystemFailure();
}

void makePrivateFile(const std::filesystem::path& file, const std::string& content) {
  TemporaryFile temporary(file.string());
  temporary.write(content);
  if (link(temporary.path().c_str(), file.c_str()) != 0 && errno != EEXIST) throw lastSystemFailure();
}

}  // namespace host
