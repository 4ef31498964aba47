// Any bytes in the token file: the host has the first line as its token, or refuses the file and says so in
// one line; the file stays as it is.
#include "identity/token_file.h"

#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "property.h"

namespace {

namespace fs = std::filesystem;

/// In a folder of its own, which is gone with the process.
class TokenFile {
 public:
  TokenFile() : m_folder(fs::temp_directory_path() / ("mirn-fuzz-" + std::to_string(getpid()))) {
    fs::create_directories(m_folder);
    fill({});
    fs::permissions(path(), fs::perms::owner_read | fs::perms::owner_write);
  }
  TokenFile(const TokenFile&) = delete;
  TokenFile& operator=(const TokenFile&) = delete;
  ~TokenFile() {
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
  }

  std::string path() const { return (m_folder / "token").string(); }

  void fill(std::string_view content) const {
    std::ofstream(path(), std::ios::binary)
        .write(content.data(), static_cast<std::streamsize>(content.size()));
  }

  std::string content() const {
    std::ifstream file(path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  fs::path m_folder;
};

/// The rule once more, told by what a character is.
bool mayServe(std::string_view line) {
  if (line.size() < 32 || line.size() > 256) return false;
  for (const char character : line) {
    const bool letter = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
    const bool digit = character >= '0' && character <= '9';
    const bool mark = character == '-' || character == '.' || character == '_' || character == '~';
    if (!letter && !digit && !mark) return false;
  }
  return true;
}

/// Nothing when the file is refused.
std::optional<std::string> load(const std::string& path) {
  try {
    return host::loadOrCreateToken(path, [](std::chrono::milliseconds) {});
  } catch (const std::runtime_error& failure) {
    const std::string_view reason = failure.what();
    fuzz::require(reason.find('\n') == std::string_view::npos, "the reason is one line");
    fuzz::require(reason.substr(0, 10) == "token file", "the reason says which file it is about");
    return {};
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TokenFile file;
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  const std::string_view line = content.substr(0, content.find('\n'));
  file.fill(content);
  const auto token = load(file.path());
  fuzz::require(token.has_value() == mayServe(line), "a first line that may serve is taken, and no other");
  fuzz::require(!token || *token == line, "the token is the first line");
  fuzz::require(file.content() == content, "the file stays as it is");
  return 0;
}
