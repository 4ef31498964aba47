#include "identity/token_file.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <thread>

#include "atomic_file.h"
#include "identity/private_text.h"
#include "identity/token.h"

namespace host {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::milliseconds kPause{10};

/// Nothing when there is no such file.
std::optional<std::string> load(const fs::path& path) {
  const auto text = readPrivateText(path);
  if (!text) return {};
  if (text->empty()) throw UnreadableFile("is empty");
  const std::string token = text->substr(0, text->find('\n'));
  if (!isToken(token)) throw std::runtime_error("holds no token");
  return token;
}

std::string loadOrCreate(const fs::path& path) {
  if (const auto token = load(path)) return *token;
  makeFolderOf(path);
  makePrivateFile(path, makeToken() + "\n");
  if (const auto token = load(path)) return *token;
  throw UnreadableFile("vanished");
}

std::string loadOrCreate(const fs::path& path, const Pause& pause) {
  for (auto left = kTokenFilePatience;; left -= kPause) {
    try {
      return loadOrCreate(path);
    } catch (const UnreadableFile&) {
      // Another start may just be making it.
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

void sleepFor(std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }

}  // namespace host
