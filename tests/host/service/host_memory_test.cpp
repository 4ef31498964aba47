#include <fstream>
#include <sstream>
#include <vector>

#include "host/service/test_host.h"

namespace host {

namespace {

constexpr long kMostKilobytes = 250000;

class HostMemoryTest : public TestHost {
 protected:
  /// A line of what the system tells of the host's memory, in kilobytes.
  long kilobytes(const std::string& name) {
    std::ifstream status("/proc/" + std::to_string(host().processId()) + "/status");
    for (std::string line; std::getline(status, line);) {
      if (line.compare(0, name.size() + 1, name + ":") == 0) return std::stol(line.substr(name.size() + 1));
    }
    return -1;
  }
};

TEST_F(HostMemoryTest, WhatLargeAnswersTookIsGivenBack) {
  serve();
  for (int i = 0; i < 32; ++i) EXPECT_EQ(get("/api/v7/test/large?size=2000000").result_int(), 200U);
  const long resident = kilobytes("VmRSS");
  EXPECT_GT(resident, 0);
  EXPECT_LT(resident, kMostKilobytes);
}

TEST_F(HostMemoryTest, ManyBodiesOfManyValuesStayWithinBounds) {
  serve();
  std::string lists = "[[]";
  while (lists.size() < 261000) lists += ",[]";
  lists += "]";
  std::vector<std::unique_ptr<HttpConnection>> clients;
  for (int i = 0; i < 64; ++i) {
    clients.push_back(std::make_unique<HttpConnection>(host().port()));
    clients.back()->send(HttpConnection::make("PUT", "/api/v7/test", host().token(), lists));
  }
  for (const auto& client : clients) EXPECT_GE(client->receive().result_int(), 400U);
  const long peak = kilobytes("VmHWM");
  EXPECT_GT(peak, 0);
  EXPECT_LT(peak, kMostKilobytes);
}

}  // namespace

}  // namespace host
