#ifndef MIRN_TESTS_HOST_BUNDLE_UNPACKED_H
#define MIRN_TESTS_HOST_BUNDLE_UNPACKED_H

#include <boost/beast/zlib/inflate_stream.hpp>
#include <map>
#include <string>

namespace host {

/// The bytes that were packed as gzip, of which there are at most so many.
inline std::string unpackedBytes(const std::string& packed, std::size_t most) {
  constexpr std::size_t kHeader = 10;
  constexpr std::size_t kTrailer = 8;
  std::string bytes(most, '\0');
  boost::beast::zlib::inflate_stream stream;
  boost::beast::zlib::z_params params;
  params.next_in = packed.data() + kHeader;
  params.avail_in = packed.size() - kHeader - kTrailer;
  params.next_out = bytes.data();
  params.avail_out = bytes.size();
  boost::beast::error_code error;
  stream.write(params, boost::beast::zlib::Flush::finish, error);
  bytes.resize(params.total_out);
  return bytes;
}

/// The files of an archive with short names, by their names.
inline std::map<std::string, std::string> unpackedFiles(const std::string& archive) {
  constexpr std::size_t kBlock = 512;
  std::map<std::string, std::string> files;
  for (std::size_t at = 0; at + kBlock <= archive.size() && archive[at] != '\0';) {
    const std::size_t size = std::stoul(archive.substr(at + 124, 11), nullptr, 8);
    files[archive.substr(at, 100).c_str()] = archive.substr(at + kBlock, size);
    at += kBlock + (size + kBlock - 1) / kBlock * kBlock;
  }
  return files;
}

}  // namespace host

#endif
