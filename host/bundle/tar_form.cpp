#include "bundle/tar_form.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <stdexcept>
#include <string_view>

#include "tar_header.h"

namespace host {

namespace {

using namespace tar;

constexpr std::size_t kEndBlocks = 2;
constexpr std::uint64_t kTooLarge = std::uint64_t{1} << 33U;  // eleven octal digits
constexpr char kRecordsName[] = "long-name";
constexpr std::uint64_t kOwnersFile = 0644;

using Header = std::array<char, kBlock>;

void put(Header& header, const Field& field, std::string_view text) {
  std::copy_n(text.begin(), std::min(text.size(), field.size), header.begin() + field.begin);
}

/// Octal digits that fill the field but for its last character.
void put(Header& header, const Field& field, std::uint64_t number) {
  for (std::size_t i = field.size - 1; i-- > 0; number /= 8) {
    header.at(field.begin + i) = static_cast<char>('0' + number % 8);
  }
}

/// The sum counts its own field as blanks.
void putSum(Header& header) {
  put(header, kSum, "        ");
  const unsigned sum = std::accumulate(header.begin(), header.end(), 0U, [](unsigned all, char each) {
    return all + static_cast<unsigned char>(each);
  });
  put(header, {kSum.begin, kSum.size - 1}, sum);
  header.at(kSum.begin + kSum.size - 2) = '\0';
}

std::string headerOf(std::string_view name, char type, std::uint64_t size, std::int64_t seconds) {
  if (size >= kTooLarge) throw std::length_error("a file is too large for the archive");
  Header header{};
  put(header, kName, name);
  put(header, kMode, kOwnersFile);
  put(header, kOwner, 0);
  put(header, kGroup, 0);
  put(header, kSize, size);
  put(header, kTime, static_cast<std::uint64_t>(std::max<std::int64_t>(seconds, 0)));
  put(header, kType, std::string_view(&type, 1));
  put(header, kMagic, std::string_view("ustar\00000", kMagic.size));
  putSum(header);
  return {header.begin(), header.end()};
}

/// "LENGTH path=NAME\n", where the length is that of all of it, its own digits among them.
std::string pathRecord(const std::string& name) {
  const std::string rest = std::string(" ") + kPathKey + '=' + name + '\n';
  std::size_t length = rest.size() + 1;
  while (std::to_string(length).size() + rest.size() != length) ++length;
  return std::to_string(length) + rest;
}

}  // namespace

std::string tarHeader(const std::string& name, std::uint64_t size, std::int64_t seconds) {
  std::string header;
  if (name.size() > kName.size) {
    const std::string record = pathRecord(name);
    header = headerOf(kRecordsName, kRecords, record.size(), seconds) + record + tarPadding(record.size());
  }
  return header + headerOf(name, kPlainFile, size, seconds);
}

std::string tarPadding(std::uint64_t size) {
  const std::size_t used = size % kBlock;
  return std::string(used == 0 ? 0 : kBlock - used, '\0');
}

std::string tarEnd() { return std::string(kEndBlocks * kBlock, '\0'); }

}  // namespace host
