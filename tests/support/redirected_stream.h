#ifndef MIRN_TESTS_SUPPORT_REDIRECTED_STREAM_H
#define MIRN_TESTS_SUPPORT_REDIRECTED_STREAM_H

#include <ostream>
#include <streambuf>

/// Sends what is written to `stream` to `buffer`, as long as it lives.
class RedirectedStream {
 public:
  RedirectedStream(std::wostream& stream, std::wstreambuf& buffer)
      : m_stream(stream), m_before(stream.rdbuf(&buffer)) {}
  RedirectedStream(const RedirectedStream&) = delete;
  RedirectedStream& operator=(const RedirectedStream&) = delete;
  ~RedirectedStream() {
    m_stream.rdbuf(m_before);
    m_stream.clear();
  }

 private:
  std::wostream& m_stream;
  std::wstreambuf* m_before;
};

#endif
