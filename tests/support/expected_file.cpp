#include "support/expected_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

/// The line around a place, with what does not show spelled out.
std::string lineAt(const std::string& text, std::size_t place) {
  if (place == text.size()) return "(the end)";
  const std::size_t before = place == 0 ? std::string::npos : text.rfind('\n', place - 1);
  const std::size_t first = before == std::string::npos ? 0 : before + 1;
  const std::size_t end = text.find('\n', place);
  std::string line = text.substr(first, end - first);
  if (!line.empty() && line.back() == '\r') line.replace(line.size() - 1, 1, "\\r");
  return end == std::string::npos ? line + " (no line end)" : line;
}

/// The streams' own flags stay off, so that the message names the file.
template <class Stream>
void require(const Stream& stream, const std::string& path) {
  if (!stream) throw std::runtime_error("no access to " + path);
}

}  // namespace

std::string firstDifference(const std::string& expected, const std::string& actual) {
  if (expected == actual) return {};
  const auto parting = std::mismatch(expected.begin(), expected.end(), actual.begin(), actual.end());
  const auto place = static_cast<std::size_t>(parting.first - expected.begin());
  const auto line = 1 + std::count(expected.begin(), parting.first, '\n');
  return "line " + std::to_string(line) + "\n  expected: " + lineAt(expected, place) +
         "\n  actual:   " + lineAt(actual, place);
}

std::string readExpectedFile(const std::string& path) {
  std::ifstream stream(std::filesystem::u8path(path), std::ios::binary);
  require(stream, path);
  return {std::istreambuf_iterator<char>(stream), {}};
}

void writeExpectedFile(const std::string& path, const std::string& text) {
  std::ofstream stream(std::filesystem::u8path(path), std::ios::binary);
  stream << text << std::flush;
  require(stream, path);
}
