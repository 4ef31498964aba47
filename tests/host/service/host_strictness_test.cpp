#include <algorithm>
#include <boost/system/system_error.hpp>
#include <set>

#include "host/http/request_vectors.h"
#include "host/service/test_host.h"

namespace host {

namespace {

constexpr char kPlaceOfToken[] = "TOKEN";

class HostStrictnessTest : public TestHost {
 protected:
  std::string filled(std::string text) {
    for (std::size_t at = text.find(kPlaceOfToken); at != std::string::npos; at = text.find(kPlaceOfToken)) {
      text.replace(at, sizeof(kPlaceOfToken) - 1, host().token());
    }
    return text;
  }

  /// The statuses of the answers that come; 0 in place of one that does not.
  static std::vector<unsigned> answers(HttpConnection& client, const RequestVector& vector) {
    std::vector<unsigned> statuses;
    const std::string method = vector.bytes.compare(0, 5, "HEAD ") == 0 ? "HEAD" : "GET";
    for (std::size_t i = 0; i < vector.answers.size(); ++i) {
      try {
        statuses.push_back(client.receive(method).result_int());
      } catch (const boost::system::system_error&) {
        statuses.push_back(0);
      }
    }
    return statuses;
  }

  /// How often the plug-in was called since the last time this was asked.
  int newCalls() {
    const std::string all = trace();
    const std::string word = "handleRequest\n";
    int count = 0;
    for (std::size_t at = all.find(word); at != std::string::npos; at = all.find(word, at + 1)) ++count;
    return count - std::exchange(m_calls, count);
  }

  void expect(const RequestVector& vector) {
    SCOPED_TRACE(vector.name);
    HttpConnection client = connect();
    client.sendBytes(filled(vector.bytes));
    EXPECT_EQ(answers(client, vector), vector.answers);
    if (vector.stays) {
      EXPECT_EQ(client.get("/healthz", "").result_int(), 200U);
    } else {
      EXPECT_EQ(client.receiveToEnd(), "");
    }
    EXPECT_EQ(newCalls(), vector.calls);
  }

 private:
  int m_calls = 0;
};

TEST_F(HostStrictnessTest, EveryRequestComesToWhatItMay) {
  // One that is kept open against its row waits for the host to close it.
  serve({"--server-name", "storage.example", "--idle-timeout", "5"});
  for (const RequestVector& vector : requestVectors()) {
    expect(vector);
  }
}

TEST(RequestVectors, HaveNamesOfTheirOwn) {
  std::set<std::string> names;
  for (const RequestVector& vector : requestVectors())
    EXPECT_TRUE(names.insert(vector.name).second) << vector.name;
  EXPECT_GE(names.size(), 150U);
}

}  // namespace

}  // namespace host
