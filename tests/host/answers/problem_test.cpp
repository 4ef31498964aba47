#include "answers/problem.h"

#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "answers/answer.h"
#include "service_exceptions.h"
#include "support/by_name.h"

namespace host {

namespace {

using ovra::common::HttpClientErrorException;

struct IdRow {
  std::string name;
  std::string errorId;
  unsigned status;
};

class ErrorIdTest : public testing::TestWithParam<IdRow> {};

TEST_P(ErrorIdTest, HasItsStatus) {
  const Problem problem = problemOf(ListenerException(GetParam().errorId, "why"));
  EXPECT_EQ(problem.status, GetParam().status);
  EXPECT_EQ(problem.errorId, GetParam().errorId);
  EXPECT_EQ(problem.detail, "why");
}

INSTANTIATE_TEST_SUITE_P(Ids, ErrorIdTest,
                         testing::Values(IdRow{"ObjectNotFound", "OBJECT_NOT_FOUND", 404},
                                         IdRow{"InvalidParameter", "INVALID_PARAMETER", 400},
                                         IdRow{"InvalidRaidLevel", "Mirn_INVALID_RAID_LEVEL", 400},
                                         IdRow{"UnsupportedRaidLevel", "Mirn_UNSUPPORTED_RAID_LEVEL", 400},
                                         IdRow{"NotSupported", "NOT_SUPPORTED", 422},
                                         IdRow{"DiskInvalidState", "Mirn_DISK_INVALID_STATE", 409},
                                         IdRow{"ArrayInvalidState", "Mirn_ARRAY_INVALID_STATE", 409},
                                         IdRow{"VolumeInvalidState", "Mirn_VOLUME_INVALID_STATE", 409},
                                         IdRow{"Offline", "Mirn_OFFLINE", 503},
                                         IdRow{"NotInitialized", "Mirn_NOT_INITIALIZED", 503},
                                         IdRow{"Internal", "INTERNAL_ERROR", 500},
                                         IdRow{"OperationFailed", "Mirn_OPERATION_FAILED", 500},
                                         IdRow{"Unknown", "SOMETHING_NEW", 500}),
                         ByName());

struct StatusRow {
  std::string name;
  std::int32_t given;
  unsigned status;
};

class ClientErrorTest : public testing::TestWithParam<StatusRow> {};

TEST_P(ClientErrorTest, KeepsItsStatusWhenItIsAFailures) {
  const Problem problem = problemOf(HttpClientErrorException(GetParam().given, "why"));
  EXPECT_EQ(problem.status, GetParam().status);
  EXPECT_EQ(problem.errorId, "");
}

INSTANTIATE_TEST_SUITE_P(Statuses, ClientErrorTest,
                         testing::Values(StatusRow{"NotFound", 404, 404}, StatusRow{"First", 400, 400},
                                         StatusRow{"Last", 599, 599}, StatusRow{"Success", 200, 500},
                                         StatusRow{"TooLarge", 600, 500}, StatusRow{"Zero", 0, 500},
                                         StatusRow{"Negative", -404, 500}),
                         ByName());

TEST(Problem, AnyOtherFailureIsTheServers) {
  const Problem problem = problemOf(std::out_of_range("invalid map<K, T> key"));
  EXPECT_EQ(problem.status, 500U);
  EXPECT_EQ(problem.detail, "invalid map<K, T> key");
  EXPECT_EQ(problem.errorId, "");
}

TEST(Problem, DocumentHasAnErrorIdOnlyWhereThereIsOne) {
  EXPECT_EQ(boost::json::parse(problemDocument({422, "no", "NOT_SUPPORTED"})), boost::json::parse(R"({
    "type": "about:blank", "title": "Unprocessable Entity", "status": 422, "detail": "no",
    "errorId": "NOT_SUPPORTED"})"));
  EXPECT_EQ(boost::json::parse(problemDocument({404, "gone", ""})), boost::json::parse(R"({
    "type": "about:blank", "title": "Not Found", "status": 404, "detail": "gone"})"));
}

TEST(Problem, ALongDetailIsCutBetweenCharacters) {
  const std::string text = std::string(3000, 'y') + [] {
    std::string umlauts;
    for (int i = 0; i < 1000; ++i) umlauts += "\xC3\xBC";
    return umlauts;
  }();
  const Problem problem = problemOf(std::runtime_error(text));
  EXPECT_EQ(problem.detail.size(), 4095U);
  EXPECT_EQ(problem.detail.substr(4090), "\xC3\xBC...");
  EXPECT_EQ(problemOf(std::runtime_error(std::string(4096, 'x'))).detail, std::string(4096, 'x'));
}

TEST(Problem, DetailThatIsNotUtf8IsMadeSo) {
  EXPECT_EQ(problemOf(std::runtime_error("na\xEFve")).detail, "na?ve");
  EXPECT_EQ(problemOf(std::runtime_error("na\xC3\xAFve")).detail, "na\xC3\xAFve");
  EXPECT_EQ(problemOf(std::runtime_error("na\xED\xA0\x80ve")).detail, "na???ve");
}

TEST(FailureAnswer, CarriesTheHeadersOfARefusal) {
  const Answer answer = failureAnswer(Refusal(405, "no", {{"Allow", "GET"}}));
  EXPECT_EQ(answer.status, 405U);
  EXPECT_EQ(answer.contentType, "application/problem+json");
  EXPECT_EQ(answer.headers, (Headers{{"Allow", "GET"}}));
}

}  // namespace

}  // namespace host
