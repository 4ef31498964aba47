#ifndef MIRN_HOST_ANSWERS_GZIP_STREAM_H
#define MIRN_HOST_ANSWERS_GZIP_STREAM_H

#include <boost/beast/zlib/deflate_stream.hpp>
#include <boost/crc.hpp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace host {

/// Packs bytes that come bit by bit as gzip (RFC 1952); the same for the same bytes, however they are cut.
class GzipStream {
 public:
  GzipStream();

  void add(std::string_view bytes);
  /// Nothing more comes.
  void finish();

  /// How much is packed already and was not taken.
  std::size_t packedSize() const { return m_packed.size(); }
  /// What is packed already; it is gone from here then.
  std::string take();

 private:
  void deflate(std::string_view bytes, boost::beast::zlib::Flush flush);

  boost::beast::zlib::deflate_stream m_stream;
  boost::crc_32_type m_sum;
  std::uint32_t m_size = 0;  // modulo 2^32, as the format has it
  std::string m_packed;
};

}  // namespace host

#endif
