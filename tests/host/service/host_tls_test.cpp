#include <csignal>

#include "host/service/test_host.h"
#include "host/service/tls_client.h"
#include "support/test_certificate.h"

namespace host {

namespace {

namespace asio = boost::asio;

class HostTlsTest : public TestHost {
 protected:
  HostTlsTest() { place(m_server); }

  void place(const TestCertificate& server) {
    std::ofstream(file("certificate.pem")) << server.certificate();
    std::ofstream(file("key.pem")) << server.key();
    std::ofstream(file("authority.pem")) << m_authority.certificate();
  }
  std::vector<std::string> options(std::vector<std::string> more = {}) const {
    more.insert(more.end(), {"--tls-certificate", file("certificate.pem"), "--tls-key", file("key.pem")});
    return more;
  }
  static std::string request(const std::string& field = "",
                             const std::string& more = "Connection: close\r\n") {
    return "GET /api/v7 HTTP/1.1\r\nHost: localhost\r\n" + more + field + "\r\n";
  }
  std::string token() { return "Authorization: Bearer " + host().token() + "\r\n"; }

  const TestCertificate m_authority{"authority"};
  const TestCertificate m_server{"server", m_authority};
};

TEST_F(HostTlsTest, AnswersAndSaysFarewell) {
  serve(options());
  TlsClient client(m_authority);
  ASSERT_TRUE(client.connect(host().port()));
  EXPECT_EQ(client.version(), "TLSv1.3");
  client.send(request(token()));
  EXPECT_EQ(client.receive("nothing").rfind("HTTP/1.1 200 ", 0), 0U);
  EXPECT_EQ(client.end(), asio::error::eof);  // not cut off
}

TEST_F(HostTlsTest, SaysFarewellToWhoIsIdleAtTheStop) {
  serve(options());
  TlsClient client(m_authority);
  ASSERT_TRUE(client.connect(host().port()));
  client.send(request(token(), ""));
  EXPECT_THAT(client.receive("\r\n\r\n"), testing::StartsWith("HTTP/1.1 200 "));
  EXPECT_EQ(host().stop(), 0);
  client.receive("nothing");
  EXPECT_EQ(client.end(), asio::error::eof);  // not cut off
}

TEST_F(HostTlsTest, AnswersWhoStillSendsABody) {
  serve(options());
  TlsClient client(m_authority);
  ASSERT_TRUE(client.connect(host().port()));
  client.send("POST /api/v7/test HTTP/1.1\r\nHost: localhost\r\nContent-Length: 100000\r\n\r\n" +
              std::string(50000, ' '));
  EXPECT_EQ(client.receive("nothing").rfind("HTTP/1.1 401 ", 0), 0U);
}

TEST_F(HostTlsTest, SpeaksVersion2ButNoOlder) {
  serve(options());
  TlsClient client(m_authority);
  client.speakOnly(TLS1_2_VERSION);
  ASSERT_TRUE(client.connect(host().port()));
  client.send(request(token()));
  EXPECT_EQ(client.receive("nothing").rfind("HTTP/1.1 200 ", 0), 0U);
  TlsClient old(m_authority);
  old.speakOnly(TLS1_1_VERSION);
  EXPECT_FALSE(old.connect(host().port()));
}

TEST_F(HostTlsTest, SpeaksNoOtherProtocol) {
  serve(options());
  TlsClient client(m_authority);
  client.speakProtocols("\x02h2\x08http/1.1");
  EXPECT_TRUE(client.connect(host().port()));
  TlsClient other(m_authority);
  other.speakProtocols("\x02h2");
  EXPECT_FALSE(other.connect(host().port()));
}

TEST_F(HostTlsTest, ClosesOnAClientWithoutTls) {
  serve(options());
  HttpConnection client = connect();
  client.sendBytes(request());
  EXPECT_EQ(client.receiveToEnd().find("HTTP"), std::string::npos);
}

TEST_F(HostTlsTest, TakesANewCertificateAndDropsNobody) {
  serve(options());
  TlsClient before(m_authority);
  ASSERT_TRUE(before.connect(host().port()));
  const TestCertificate otherAuthority("another authority");
  place(TestCertificate("server", otherAuthority));
  host().signal(SIGHUP);
  bool isNew = false;
  for (int i = 0; i < 200 && !isNew; ++i) isNew = TlsClient(otherAuthority).connect(host().port());
  EXPECT_TRUE(isNew);
  before.send(request(token()));
  EXPECT_EQ(before.receive("nothing").rfind("HTTP/1.1 200 ", 0), 0U);
}

TEST_F(HostTlsTest, KeepsItsCertificateWhenTheNewOneIsBroken) {
  serve(options());
  std::ofstream(file("certificate.pem")) << "broken";
  host().signal(SIGHUP);
  EXPECT_TRUE(host().awaitError("mirn-host: the certificate stays as it was: "));
  EXPECT_TRUE(TlsClient(m_authority).connect(host().port()));
}

TEST_F(HostTlsTest, DoesNotStartWithWhatDoesNotServe) {
  std::ofstream(file("key.pem")) << TestCertificate("another").key();
  EXPECT_EQ(exitStatus(kModule, options()), 1);
  std::filesystem::remove(file("certificate.pem"));
  EXPECT_EQ(exitStatus(kModule, options()), 1);
  EXPECT_NE(host().errors().find(file("certificate.pem")), std::string::npos);
}

TEST_F(HostTlsTest, KnowsClientsByTheirCertificate) {
  serve(options({"--tls-client-ca", file("authority.pem"), "--tls-client", "observe:CN=monitor"}));
  const auto statusOf = [&](const TestCertificate& own) {
    TlsClient client(m_authority);
    client.show(own);
    if (!client.connect(host().port())) return std::string("refused");
    client.send(request());
    const std::string answer = client.receive("nothing");
    return answer.empty() ? std::string("refused") : answer.substr(9, 3);
  };
  EXPECT_EQ(statusOf(TestCertificate("monitor", m_authority)), "200");
  EXPECT_EQ(statusOf(TestCertificate("somebody", m_authority)), "401");
  EXPECT_EQ(statusOf(TestCertificate("monitor", TestCertificate("stranger"))), "refused");
  TlsClient without(m_authority);
  ASSERT_TRUE(without.connect(host().port()));
  without.send(request(token()));
  EXPECT_EQ(without.receive("nothing").rfind("HTTP/1.1 200 ", 0), 0U);
}

}  // namespace

}  // namespace host
