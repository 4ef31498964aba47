#include "api/endpoint_table.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace host {

namespace {

ApiEndpoint endpoint(const std::string& operation, const std::string& method, const std::wstring& path) {
  ApiEndpoint made;
  made.operation = operation;
  made.method = method;
  made.path = path;
  return made;
}

class EndpointTableTest : public testing::Test {
 protected:
  EndpointTableTest() {
    m_table.add(endpoint("anything", "GET", L"test/{*}"));
    m_table.add(endpoint("deep", "GET", L"test/deep/{*}"));
    m_table.add(endpoint("one", "PUT", L"things/{id}"));
    m_table.add(endpoint("own", "PUT", L"things/own"));
    m_table.add(endpoint("list", "GET", L"things"));
    m_table.add(endpoint("make", "POST", L"things"));
  }

  std::string found(const std::string& method, const std::vector<std::wstring>& segments) const {
    const EndpointTable::Resource* const resource = m_table.find(segments);
    if (resource == nullptr) return "no path";
    const ApiEndpoint* const at = resource->find(method);
    return at == nullptr ? "no method" : at->operation;
  }

  EndpointTable m_table;
};

TEST_F(EndpointTableTest, FindsByPathAndMethod) {
  EXPECT_EQ(found("GET", {L"things"}), "list");
  EXPECT_EQ(found("POST", {L"things"}), "make");
  EXPECT_EQ(found("PUT", {L"things"}), "no method");
  EXPECT_EQ(found("GET", {L"thing"}), "no path");
  EXPECT_EQ(found("GET", {}), "no path");
}

TEST_F(EndpointTableTest, TheMostExactPathWins) {
  EXPECT_EQ(found("GET", {L"test", L"a"}), "anything");
  EXPECT_EQ(found("GET", {L"test", L"deep"}), "deep");
  EXPECT_EQ(found("GET", {L"test", L"deep", L"er"}), "deep");
  EXPECT_EQ(found("GET", {L"test", L"deeper"}), "anything");
  EXPECT_EQ(found("PUT", {L"things", L"7"}), "one");
  EXPECT_EQ(found("PUT", {L"things", L"own"}), "own");
}

TEST_F(EndpointTableTest, HeadIsAGet) {
  EXPECT_EQ(found("HEAD", {L"things"}), "list");
  EXPECT_EQ(found("HEAD", {L"things", L"7"}), "no method");
  EXPECT_EQ(found("get", {L"things"}), "no method");
}

TEST_F(EndpointTableTest, TellsWhichMethodsAreAllowed) {
  EXPECT_EQ(m_table.find({L"things"})->allowed(), "GET, HEAD, POST, OPTIONS");
  EXPECT_EQ(m_table.find({L"things", L"7"})->allowed(), "PUT, OPTIONS");
}

TEST_F(EndpointTableTest, TakesNoTwoOperationsForOneRequest) {
  EXPECT_THROW(m_table.add(endpoint("again", "PUT", L"things/{other}")), std::runtime_error);
}

}  // namespace

}  // namespace host
