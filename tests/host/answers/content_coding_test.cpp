#include "answers/content_coding.h"

#include <gtest/gtest.h>

#include <boost/beast/zlib/inflate_stream.hpp>
#include <boost/crc.hpp>

#include "support/by_name.h"

namespace host {

namespace {

struct AcceptRow {
  std::string name;
  std::optional<std::string> field;
  std::optional<ContentCoding> coding;
};

class AcceptedCodings : public testing::TestWithParam<AcceptRow> {};

TEST_P(AcceptedCodings, DecideTheForm) { EXPECT_EQ(codingFor(GetParam().field), GetParam().coding); }

INSTANTIATE_TEST_SUITE_P(
    Fields, AcceptedCodings,
    testing::Values(AcceptRow{"Missing", {}, ContentCoding::kPlain},
                    AcceptRow{"Empty", "", ContentCoding::kPlain},
                    AcceptRow{"Gzip", "gzip", ContentCoding::kGzipLarge},
                    AcceptRow{"AnyCase", "GZip", ContentCoding::kGzipLarge},
                    AcceptRow{"Alias", "x-gzip", ContentCoding::kGzipLarge},
                    AcceptRow{"Browser", "gzip, deflate, br, zstd", ContentCoding::kGzipLarge},
                    AcceptRow{"Blanks", " br ; q=1 ,\tgzip ; q=0.5 ", ContentCoding::kGzipLarge},
                    AcceptRow{"Star", "*", ContentCoding::kGzipLarge},
                    AcceptRow{"OtherOnes", "br", ContentCoding::kPlain},
                    AcceptRow{"NoGzip", "gzip;q=0", ContentCoding::kPlain},
                    AcceptRow{"NoGzipInThousandths", "gzip;q=0.000", ContentCoding::kPlain},
                    AcceptRow{"StarButNoGzip", "gzip;q=0, *", ContentCoding::kPlain},
                    AcceptRow{"PlainIsLiked", "gzip;q=0.5, identity", ContentCoding::kPlain},
                    AcceptRow{"BothAlike", "gzip;q=0.5, identity;q=0.5", ContentCoding::kGzipLarge},
                    AcceptRow{"GzipAlone", "gzip, identity;q=0", ContentCoding::kGzipAll},
                    AcceptRow{"NothingElse", "gzip, *;q=0", ContentCoding::kGzipAll},
                    AcceptRow{"NothingAtAll", "*;q=0", {}}, AcceptRow{"NoPlain", "identity;q=0", {}},
                    AcceptRow{"PlainAmongNone", "*;q=0, identity", ContentCoding::kPlain},
                    AcceptRow{"WrongWeight", "gzip;q=2", ContentCoding::kPlain},
                    AcceptRow{"LongWeight", "gzip;q=0.0001", ContentCoding::kPlain},
                    AcceptRow{"NoWeight", "gzip;x=1", ContentCoding::kPlain}),
    ByName());

std::uint32_t numberAt(const std::string& bytes, std::size_t place) {
  std::uint32_t number = 0;
  for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[place + i]);
  return number;
}

/// Reads what RFC 1952 says that there is.
std::string unpacked(const std::string& bytes, std::size_t size) {
  EXPECT_EQ(bytes.substr(0, 4), std::string("\x1f\x8b\x08\0", 4));
  std::string text(size + 1, '\0');
  boost::beast::zlib::inflate_stream stream;
  boost::beast::zlib::z_params params;
  params.next_in = bytes.data() + 10;
  params.avail_in = bytes.size() - 18;
  params.next_out = text.data();
  params.avail_out = text.size();
  boost::beast::error_code error;
  stream.write(params, boost::beast::zlib::Flush::finish, error);
  EXPECT_EQ(error, boost::beast::zlib::error::end_of_stream);
  text.resize(params.total_out);
  boost::crc_32_type sum;
  sum.process_bytes(text.data(), text.size());
  EXPECT_EQ(numberAt(bytes, bytes.size() - 8), sum.checksum());
  EXPECT_EQ(numberAt(bytes, bytes.size() - 4), text.size());
  return text;
}

TEST(Gzip, GivesBackWhatWasPacked) {
  std::string mixed;
  for (unsigned i = 0; i < 300000; ++i) mixed += static_cast<char>(i * i >> 7);
  for (const std::string& text : {std::string(), std::string("a"), std::string(5000000, 'x'), mixed}) {
    const std::string packed = gzip(text);
    EXPECT_EQ(unpacked(packed, text.size()), text);
    EXPECT_EQ(gzip(text), packed);
  }
  EXPECT_LT(gzip(std::string(100000, 'x')).size(), 1000U);
}

}  // namespace

}  // namespace host
