#include "bundle/bundle_folder.h"

#include <filesystem>
#include <fstream>

#include "bundle/bundle_files.h"

namespace simulator {
namespace {

std::string readFile(const std::filesystem::path& path, std::size_t most) {
  const std::string name = path.u8string();
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error) throw BundleError(name + ": cannot be read");
  if (size > most) throw BundleError(name + ": is too large");
  std::string bytes(static_cast<std::size_t>(size), '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!file) throw BundleError(name + ": cannot be read");
  return bytes;
}

}  // namespace

void readFolder(const std::string& folder, BundleFiles& wanted) {
  for (auto& [name, content] : wanted) {
    const std::filesystem::path path = std::filesystem::u8path(folder) / std::filesystem::u8path(name);
    if (std::filesystem::exists(path)) content = readFile(path, kMostUnpackedBytes);
  }
}

std::string readPacked(const std::string& path) {
  return readFile(std::filesystem::u8path(path), kMostPackedBytes);
}

}  // namespace simulator
