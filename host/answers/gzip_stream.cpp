#include "answers/gzip_stream.h"

#include <stdexcept>
#include <utility>

namespace host {

namespace {

namespace zlib = boost::beast::zlib;

/// Deflated, no flags, no time, no system: so the same bytes always give the same.
constexpr char kHeader[] = {'\x1f', '\x8b', '\x08', 0, 0, 0, 0, 0, 0, '\xff'};
constexpr int kLevel = 6;
constexpr int kWindowBits = 15;
constexpr int kMemoryLevel = 8;
constexpr std::size_t kRoom = 65536;

void appendNumber(std::string& text, std::uint32_t number) {
  for (int shift = 0; shift < 32; shift += 8) text += static_cast<char>((number >> shift) & 0xFF);
}

}  // namespace

GzipStream::GzipStream() : m_packed(kHeader, sizeof(kHeader)) {
  m_stream.reset(kLevel, kWindowBits, kMemoryLevel, zlib::Strategy::normal);
}

void GzipStream::add(std::string_view bytes) {
  m_sum.process_bytes(bytes.data(), bytes.size());
  m_size += static_cast<std::uint32_t>(bytes.size());
  deflate(bytes, zlib::Flush::none);
}

void GzipStream::finish() {
  deflate({}, zlib::Flush::finish);
  appendNumber(m_packed, m_sum.checksum());
  appendNumber(m_packed, m_size);
}

std::string GzipStream::take() { return std::exchange(m_packed, {}); }

/// Until all is taken in and, at the end, all is out.
void GzipStream::deflate(std::string_view bytes, zlib::Flush flush) {
  zlib::z_params params;
  params.next_in = bytes.data();
  params.avail_in = bytes.size();
  for (bool hasMore = flush == zlib::Flush::finish || !bytes.empty(); hasMore;) {
    const std::size_t begin = m_packed.size();
    m_packed.resize(begin + kRoom);
    params.next_out = m_packed.data() + begin;
    params.avail_out = kRoom;
    boost::beast::error_code error;
    m_stream.write(params, flush, error);
    m_packed.resize(m_packed.size() - params.avail_out);
    if (error == zlib::error::end_of_stream) return;
    if (error && error != zlib::error::need_buffers) throw std::runtime_error("bytes could not be packed");
    hasMore = params.avail_out == 0 || params.avail_in != 0;
  }
  if (flush == zlib::Flush::finish) throw std::runtime_error("bytes could not be packed to their end");
}

}  // namespace host
