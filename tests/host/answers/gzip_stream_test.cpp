#include "answers/gzip_stream.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "answers/content_coding.h"

namespace host {

namespace {

std::string mixedText() {
  std::string text;
  for (unsigned i = 0; i < 200000; ++i) text += static_cast<char>(i % 3 == 0 ? 'a' : i * i >> 7U);
  return text;
}

/// Cut into pieces, and taken as it comes.
std::string packedInPieces(const std::string& text, std::size_t piece) {
  GzipStream stream;
  std::string packed;
  for (std::size_t begin = 0; begin < text.size(); begin += piece) {
    stream.add(std::string_view(text).substr(begin, piece));
    packed += stream.take();
    EXPECT_EQ(stream.packedSize(), 0U);
  }
  stream.finish();
  return packed + stream.take();
}

TEST(GzipStream, GivesTheSameHoweverTheBytesAreCut) {
  const std::string text = mixedText();
  const std::string whole = gzip(text);
  for (const std::size_t piece : {7U, 512U, 65536U, 150001U}) {
    EXPECT_EQ(packedInPieces(text, piece), whole) << piece;
  }
}

TEST(GzipStream, GivesOutWhatIsPackedWhileMoreComes) {
  GzipStream stream;
  stream.add(mixedText());
  const std::size_t early = stream.take().size();
  stream.finish();
  EXPECT_GT(early, stream.take().size());
}

}  // namespace

}  // namespace host
