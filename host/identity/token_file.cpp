#include "identity/token_file.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "atomic_file.h"
#include "identity/private_file.h"
#include "identity/token.h"

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kPause{10};

/// A fault that may be gone in a moment, since another start is making the file.
class Unsettled : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Nothing when there is no such file.
std::optional<std::string> load(const fs::path& path) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::not_found) return {};
  if (!fs::status_known(status)) throw Unsettled(error.message());
  if (status.type() != fs::file_type::regular) throw std::runtime_error("is not a regular file");
  if (othersMayReach(path)) {
    throw std::runtime_error(std::string("others may read or write it (") + kPrivacyRemedy + " helps)");
  }
  std::ifstream file(path);
  std::string token;
  if (!std::getline(file, token)) throw Unsettled("cannot be read or is empty");
  if (!isToken(token)) throw std::runtime_error("holds no token");
  return token;
}

void createDirectories(const fs::path& directory) {
  if (directory.empty() || fs::exists(directory)) return;
  createDirectories(directory.parent_path());
  makePrivateDirectory(directory);
}

std::string loadOrCreate(const fs::path& path) {
  if (const auto token = load(path)) return *token;
  createDirectories(path.parent_path());
  makePrivateFile(path, makeToken() + "\n");
  if (const auto token = load(path)) return *token;
  throw Unsettled("vanished");
}

std::string loadOrCreate(const fs::path& path, const Pause& pause) {
  for (auto left = kTokenFilePatience;; left -= kPause) {
    try {
      return loadOrCreate(path);
    } catch (const Unsettled&) {
      if (left < kPause) throw;
    }
    pause(kPause);
  }
}

}  // namespace

std::string loadOrCreateToken(const std::string& path, const Pause& pause) {
  try {
    return loadOrCreate(fs::u8path(path), pause);
  } catch (const std::runtime_error& failure) {
    throw std::runtime_error("token file \"" + path + "\": " + failure.what());
  }
}

std::string loadOrCreateToken(const std::string& path) {
  return loadOrCreateToken(path, [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); });
}

}  // namespace host
