#include "archive.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

#include "tar_header.h"

namespace {

using namespace tar;

[[noreturn]] void fail(const char* words) { throw ArchiveError(words); }

std::string_view fieldOf(std::string_view header, const Field& field) {
  return header.substr(field.begin, field.size);
}

std::string textOf(std::string_view header, const Field& field) {
  const std::string_view text = fieldOf(header, field);
  return std::string(text.substr(0, text.find('\0')));
}

std::uint64_t octalOf(std::string_view header, const Field& field) {
  std::uint64_t number = 0;
  bool hasDigit = false;
  for (const char character : fieldOf(header, field)) {
    if (character >= '0' && character <= '7') {
      number = number * 8 + static_cast<std::uint64_t>(character - '0');
      hasDigit = true;
    } else if (hasDigit) {
      break;
    } else if (character != ' ') {
      fail("holds no tar archive");
    }
  }
  if (!hasDigit) fail("holds no tar archive");
  return number;
}

/// Of all bytes of the header, with blanks where the sum stands.
std::uint64_t sumOf(std::string_view header) {
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < header.size(); ++i) {
    const bool isOfSum = i >= kSum.begin && i < kSum.begin + kSum.size;
    sum += isOfSum ? static_cast<unsigned char>(' ') : static_cast<unsigned char>(header[i]);
  }
  return sum;
}

bool isEmpty(std::string_view block) {
  return std::all_of(block.begin(), block.end(), [](char character) { return character == '\0'; });
}

std::string nameOf(std::string_view header) {
  std::string name = textOf(header, kName);
  const std::string prefix = textOf(header, kPrefix);
  if (!prefix.empty()) name.insert(0, prefix + "/");
  return name;
}

std::string withoutDot(const std::string& name) {
  return name.compare(0, 2, "./") == 0 ? name.substr(2) : name;
}

/// The path that records tell; empty: none. A record's length counts its own digits, too.
std::string pathIn(std::string_view records) {
  std::string path;
  while (!records.empty()) {
    std::size_t length = 0;
    const auto digits = std::from_chars(records.data(), records.data() + records.size(), length);
    const auto begin = static_cast<std::size_t>(digits.ptr - records.data()) + 1;
    const bool isRecord = digits.ec == std::errc() && begin < length && length <= records.size() &&
                          records[begin - 1] == ' ' && records[length - 1] == '\n';
    if (!isRecord) fail("holds no tar archive");
    const std::string_view record = records.substr(begin, length - begin - 1);
    const std::size_t equals = record.find('=');
    if (record.substr(0, equals) == kPathKey && equals != record.npos) path = record.substr(equals + 1);
    records.remove_prefix(length);
  }
  return path;
}

bool isPlainFile(char type) { return type == kPlainFile || type == '\0'; }

}  // namespace

void forEachFile(std::string_view archive,
                 const std::function<void(const std::string& name, std::string_view bytes)>& take) {
  std::string longName;
  while (archive.size() >= kBlock && !isEmpty(archive.substr(0, kBlock))) {
    const std::string_view header = archive.substr(0, kBlock);
    if (fieldOf(header, kMagic).rfind(kMagicText, 0) != 0 || octalOf(header, kSum) != sumOf(header))
      fail("holds no tar archive");
    const std::uint64_t size = octalOf(header, kSize);
    archive.remove_prefix(kBlock);
    if (size > archive.size()) fail("is cut off");
    const auto bytes = archive.substr(0, static_cast<std::size_t>(size));
    const char type = header[kType.begin];
    if (type == kRecords) {
      longName = pathIn(bytes);
    } else {
      const std::string known = std::exchange(longName, {});
      if (isPlainFile(type)) take(withoutDot(known.empty() ? nameOf(header) : known), bytes);
    }
    archive.remove_prefix(std::min(archive.size(), (bytes.size() + kBlock - 1) / kBlock * kBlock));
  }
  if (archive.size() < kBlock) fail("is cut off");
}
