#include "archive.h"

#include <algorithm>
#include <boost/beast/zlib/inflate_stream.hpp>
#include <boost/crc.hpp>
#include <cstdint>

namespace {

namespace zlib = boost::beast::zlib;

constexpr std::size_t kHeaderBytes = 10;
constexpr std::size_t kTrailerBytes = 8;
constexpr std::size_t kStep = std::size_t{1} << 20;

constexpr unsigned kHeaderSumFlag = 2;
constexpr unsigned kExtraFlag = 4;
constexpr unsigned kNameFlag = 8;
constexpr unsigned kCommentFlag = 16;
constexpr unsigned kReservedFlags = 0xE0;

[[noreturn]] void fail(const char* words) { throw ArchiveError(words); }

unsigned byteAt(std::string_view bytes, std::size_t place) {
  if (place >= bytes.size()) fail("is cut off");
  return static_cast<unsigned char>(bytes[place]);
}

std::uint32_t numberAt(std::string_view bytes, std::size_t place) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i)
    number |= static_cast<std::uint32_t>(byteAt(bytes, place + i)) << (8 * i);
  return number;
}

std::size_t behindText(std::string_view bytes, std::size_t place) {
  while (byteAt(bytes, place) != 0) ++place;
  return place + 1;
}

/// Where the packed data begin.
std::size_t behindHeader(std::string_view bytes) {
  if (bytes.size() < kHeaderBytes || bytes.substr(0, 3) != "\x1f\x8b\x08") fail("is no gzip file");
  const unsigned flags = byteAt(bytes, 3);
  if ((flags & kReservedFlags) != 0) fail("is no gzip file that is known");
  std::size_t place = kHeaderBytes;
  if ((flags & kExtraFlag) != 0) place += 2 + byteAt(bytes, place) + 256 * byteAt(bytes, place + 1);
  if ((flags & kNameFlag) != 0) place = behindText(bytes, place);
  if ((flags & kCommentFlag) != 0) place = behindText(bytes, place);
  if ((flags & kHeaderSumFlag) != 0) place += 2;
  if (place > bytes.size()) fail("is cut off");
  return place;
}

/// Appends what is packed, and gives how many bytes that took.
std::size_t inflate(std::string_view packed, std::size_t most, std::string& result) {
  zlib::inflate_stream stream;
  zlib::z_params params;
  params.next_in = packed.data();
  params.avail_in = packed.size();
  boost::beast::error_code error;
  while (error != zlib::error::end_of_stream) {
    const std::size_t begin = result.size();
    if (begin > most) fail("holds too much");
    result.resize(begin + kStep);
    params.next_out = result.data() + begin;
    params.avail_out = kStep;
    stream.write(params, zlib::Flush::sync, error);
    result.resize(begin + kStep - params.avail_out);
    if (error == zlib::error::need_buffers || (!error && params.avail_out == kStep)) fail("is cut off");
    if (error && error != zlib::error::end_of_stream) fail("is damaged");
  }
  return packed.size() - params.avail_in;
}

}  // namespace

std::string unpackedGzip(std::string_view gzip, std::size_t most) {
  const std::string_view packed = gzip.substr(behindHeader(gzip));
  std::string result;
  const std::string_view trailer = packed.substr(inflate(packed, most, result));
  if (result.size() > most) fail("holds too much");
  if (trailer.size() < kTrailerBytes) fail("is cut off");
  if (trailer.size() > kTrailerBytes) fail("goes on behind its end");
  boost::crc_32_type sum;
  sum.process_bytes(result.data(), result.size());
  if (numberAt(trailer, 0) != sum.checksum() ||
      numberAt(trailer, 4) != static_cast<std::uint32_t>(result.size()))
    fail("is damaged");
  return result;
}
