#include "http/chunk.h"

#include <array>
#include <charconv>

namespace host {

namespace {

constexpr std::size_t kMostDigits = 16;
constexpr int kHexadecimal = 16;
constexpr char kLineEnd[] = "\r\n";

}  // namespace

std::string chunkOf(const std::string& bytes) {
  if (bytes.empty()) return {};
  std::array<char, kMostDigits> digits{};
  char* const end =
      std::to_chars(digits.data(), digits.data() + digits.size(), bytes.size(), kHexadecimal).ptr;
  std::string chunk;
  chunk.reserve(bytes.size() + kMostDigits + 2 * sizeof(kLineEnd) + sizeof(kLastChunk));
  chunk.append(digits.data(), static_cast<std::size_t>(end - digits.data())).append(kLineEnd);
  return chunk.append(bytes).append(kLineEnd);
}

}  // namespace host
