#include "api/request_counts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <thread>

namespace host {

namespace {

using std::chrono::microseconds;
using testing::ElementsAre;
using testing::IsEmpty;

EndpointTable tableOf(const std::vector<std::string>& operations) {
  EndpointTable table;
  for (const std::string& operation : operations) {
    ApiEndpoint endpoint;
    endpoint.operation = operation;
    endpoint.method = "GET";
    endpoint.path = std::wstring(operation.begin(), operation.end());
    table.add(std::move(endpoint));
  }
  return table;
}

class RequestCountsTest : public testing::Test {
 protected:
  RequestCountsTest() { m_counts.know(tableOf({"getState", "listVolumes"})); }

  /// "OPERATION STATUS COUNT" of each row.
  std::vector<std::string> told() const {
    std::vector<std::string> told;
    for (const RequestCounts::Row& row : m_counts.rows()) {
      const auto count = std::accumulate(row.counts.begin(), row.counts.end(), std::uint64_t{0});
      told.push_back(row.operation + ' ' + row.status + ' ' + std::to_string(count));
    }
    return told;
  }

  RequestCounts m_counts;
};

TEST_F(RequestCountsTest, CountsByOperationAndStatus) {
  EXPECT_THAT(told(), IsEmpty());
  m_counts.count("listVolumes", 200, microseconds(5));
  m_counts.count("listVolumes", 200, microseconds(5));
  m_counts.count("listVolumes", 503, microseconds(5));
  m_counts.count("getState", 304, microseconds(5));
  EXPECT_THAT(told(), ElementsAre("getState 304 1", "listVolumes 200 2", "listVolumes 503 1"));
}

TEST_F(RequestCountsTest, WhatLeadsToNoOperationIsOne) {
  m_counts.count("", 404, microseconds(5));
  m_counts.count("/a/path/of/the/client", 404, microseconds(5));
  m_counts.count("listMethods", 204, microseconds(5));
  EXPECT_THAT(told(), ElementsAre("listMethods 204 1", "unknown 404 2"));
}

TEST_F(RequestCountsTest, UnusualStatusesAreOne) {
  for (const unsigned status : {0U, 199U, 299U, 418U, 599U, 1000U}) {
    m_counts.count("getState", status, microseconds(5));
  }
  EXPECT_THAT(told(), ElementsAre("getState unknown 6"));
}

struct BucketCase {
  int time;  ///< Microseconds.
  std::size_t bucket;
};

class BucketTest : public testing::TestWithParam<BucketCase> {};

TEST_P(BucketTest, TakesWhatIsNotAboveItsBound) {
  RequestCounts counts;
  counts.count("", 200, microseconds(GetParam().time));
  const RequestCounts::Row row = counts.rows().front();
  std::vector<std::uint64_t> expected(RequestCounts::kBuckets);
  expected.at(GetParam().bucket) = 1;
  EXPECT_EQ(row.counts, expected);
  EXPECT_DOUBLE_EQ(row.seconds, GetParam().time / 1e6);
}

INSTANTIATE_TEST_SUITE_P(Times, BucketTest,
                         testing::Values(BucketCase{0, 0}, BucketCase{500, 0}, BucketCase{501, 1},
                                         BucketCase{1000, 1}, BucketCase{1'000'000, 7},
                                         BucketCase{30'000'000, 9}, BucketCase{30'000'001, 10}));

TEST_F(RequestCountsTest, ManyCountAtOnce) {
  constexpr int kTimes = 2000;
  std::vector<std::thread> threads;
  for (int number = 0; number < 4; ++number) {
    threads.emplace_back([this] {
      for (int time = 0; time < kTimes; ++time) {
        m_counts.count("getState", 200, microseconds(1));
        if (time % 100 == 0) m_counts.rows();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(told(), ElementsAre("getState 200 8000"));
}

}  // namespace

}  // namespace host
