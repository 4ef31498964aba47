#include "http/request_reader.h"

#include <gtest/gtest.h>

#include <boost/asio/buffer.hpp>
#include <optional>

#include "answers/answer.h"
#include "host/answers/refusal_of.h"

namespace host {

namespace {

class RequestReaderTest : public testing::Test {
 protected:
  void receive(const std::string& bytes) {
    m_input.commit(boost::asio::buffer_copy(m_input.prepare(bytes.size()), boost::asio::buffer(bytes)));
  }

  /// True once the whole request was read.
  bool read() {
    m_hasHeader = m_hasHeader || m_reader.readHeader(m_input);
    return m_hasHeader && (m_reader.isWhole() || m_reader.readBody(m_input));
  }

  HostNames m_names;
  RequestReader m_reader{Limits(), m_names, {}};
  boost::beast::flat_buffer m_input;
  bool m_hasHeader = false;
};

TEST_F(RequestReaderTest, ReadsByteByByteWhatItReadsAtOnce) {
  const std::string bytes =
      "\r\nPOST /api?a=b HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer x\r\n"
      "Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n\r\n"
      "3;name=value\r\n[1,\r\n02\r\n2]\r\n0\r\nTrailer: x\r\n\r\n";
  for (std::size_t i = 0; i + 1 < bytes.size(); ++i) {
    receive(bytes.substr(i, 1));
    ASSERT_FALSE(read()) << i;
  }
  receive(bytes.substr(bytes.size() - 1) + "GET ");
  ASSERT_TRUE(read());
  EXPECT_EQ(m_reader.request().method, "POST");
  EXPECT_EQ(m_reader.request().target, "/api?a=b");
  EXPECT_EQ(m_reader.request().authorization, "Bearer x");
  EXPECT_EQ(m_reader.request().contentType, "application/json");
  EXPECT_TRUE(m_reader.request().hasBody);
  EXPECT_TRUE(m_reader.request().keepsConnection);
  EXPECT_EQ(m_reader.takeBody(), "[1,2]");
  EXPECT_EQ(m_input.size(), 4U) << "what stands behind is the next request's";
}

TEST_F(RequestReaderTest, RefusesTrailersThatAreTooLongHoweverTheyCome) {
  const std::string line = "X: " + std::string(5000, 'a') + "\r\n";
  receive("POST / HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n");
  ASSERT_FALSE(read());
  receive("0\r\n" + line + line + "\r\n");
  EXPECT_EQ(refusalOf([&] { read(); })->status, 400);
}

TEST_F(RequestReaderTest, ReadsAnEmptyChunkedBodyByteByByte) {
  receive("POST / HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n");
  ASSERT_FALSE(read());
  for (const char* const byte : {"0", "\r", "\n", "\r"}) {
    receive(byte);
    ASSERT_FALSE(read());
  }
  receive("\n");
  EXPECT_TRUE(read());
  EXPECT_EQ(m_reader.takeBody(), "");
}

TEST_F(RequestReaderTest, ALaterMinorVersionIsTheLastOneThatIsKnown) {
  receive("GET / HTTP/1.9\r\nHost: localhost\r\n\r\n");
  ASSERT_TRUE(read());
  EXPECT_EQ(m_reader.request().version, 11U);
}

TEST_F(RequestReaderTest, AnOldClientNamesNoHostAndKeepsNoConnection) {
  receive("GET / HTTP/1.0\r\n\r\n");
  ASSERT_TRUE(read());
  EXPECT_EQ(m_reader.request().version, 10U);
  EXPECT_FALSE(m_reader.request().keepsConnection);
}

TEST_F(RequestReaderTest, ARefusedRequestIsNeverWhole) {
  receive("GET / HTTP/1.1\r\nHost: elsewhere.example\r\n\r\n");
  EXPECT_THROW(read(), Refusal);
  EXPECT_FALSE(m_reader.isWhole());
}

TEST_F(RequestReaderTest, AnyWordOfAnyConnectionFieldCloses) {
  receive("GET / HTTP/1.1\r\nHost: localhost\r\nConnection: x\r\nConnection: y, Close\r\n\r\n");
  ASSERT_TRUE(read());
  EXPECT_FALSE(m_reader.request().keepsConnection);
}

TEST_F(RequestReaderTest, ATrailerHasNoSay) {
  receive(
      "POST / HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n"
      "0\r\nConnection: close\r\nAuthorization: Bearer x\r\n\r\n");
  ASSERT_TRUE(read());
  EXPECT_TRUE(m_reader.request().keepsConnection);
  EXPECT_EQ(m_reader.request().authorization, "");
}

TEST(RequestReaderBounds, AHeaderMayBeAsLargeAsTheBound) {
  const std::string bytes = "GET / HTTP/1.1\r\nHost: localhost\r\nX-Filler: xxxxxxxxxx\r\n\r\n";
  const HostNames names;
  for (const std::size_t missing : {0U, 1U}) {
    Limits limits;
    limits.headerBytes = bytes.size() - missing;
    RequestReader reader(limits, names, {});
    boost::beast::flat_buffer input;
    input.commit(boost::asio::buffer_copy(input.prepare(bytes.size()), boost::asio::buffer(bytes)));
    const auto refusal = refusalOf([&] { reader.readHeader(input); });
    EXPECT_EQ(refusal ? refusal->status : 0, missing == 0 ? 0 : 431);
  }
}

}  // namespace

}  // namespace host
