#include "route_table.h"

#include <gtest/gtest.h>

#include <random>

#include "http_method.h"
#include "service_exceptions.h"
#include "text.h"

namespace {

using ovra::data_transfer::ServiceObject;

constexpr int kNone = -1;

std::vector<std::wstring> patterns() {
  return {L"",
          L"state",
          L"state/all",
          L"([[:alnum:]]+)",
          L"([[:alnum:]]+)/name",
          L"([[:alnum:]]+)/volumes/name",
          L"([[:alnum:]]+)name",
          L"([[:alnum:]]+)/.*",
          L"([[:alnum:]]+)-x",
          L"([[:alnum:]]+)([[:alnum:]]+)/name",
          L"[[:alnum:]]+/name",
          L".*/name",
          L"name|size",
          L"State",
          L"names?"};
}

/// The place of the pattern that the request is handed to.
int takerOf(const std::vector<std::wstring>& some, const std::wstring& path) {
  RouteTable table;
  for (std::size_t i = 0; i < some.size(); ++i) {
    table[HttpMethod::kGet].push_back(
        {some[i], [i](const RouteMatch&, const RequestParameters&, const ServiceObject&) {
           return ServiceObject(static_cast<unsigned>(i));
         }});
  }
  try {
    return static_cast<int>(routeRequest(table, HttpMethod::kGet, path, {}, {}).toInt64());
  } catch (const ovra::common::HttpClientErrorException&) {
    return kNone;
  }
}

std::wstring randomPath(std::mt19937& random) {
  static const std::vector<std::wstring> parts = {L"",      L"/",      L"7",    L"x9Z",  L"name",
                                                  L"/name", L"state",  L"size", L"/all", L"volumes",
                                                  L"-x",    L"\u00e4", L"\n",   L"s",    L"State"};
  std::wstring path;
  for (auto count = random() % 5; count > 0; --count) path += parts[random() % parts.size()];
  return path;
}

TEST(RouteTable, EachPatternTakesWhatItMatchesAndNothingElse) {
  std::mt19937 random(11);
  std::size_t taken = 0;
  for (int i = 0; i < 1000; ++i) {
    const std::wstring path = randomPath(random);
    for (const std::wstring& pattern : patterns()) {
      const bool matches = boost::regex_match(path, boost::wregex(pattern));
      EXPECT_EQ(takerOf({pattern}, path) != kNone, matches)
          << wideToUtf8(pattern) << " of " << wideToUtf8(path);
      taken += matches ? 1 : 0;
    }
  }
  EXPECT_GT(taken, 500U) << "paths of which hardly any matches tell little";
}

TEST(RouteTable, APatternThatTakesAnIdHandsItOver) {
  RouteTable table;
  table[HttpMethod::kPut].push_back(
      {L"([[:alnum:]]+)/name", [](const RouteMatch& match, const RequestParameters&, const ServiceObject&) {
         return ServiceObject(match.str(1));
       }});
  EXPECT_EQ(routeRequest(table, HttpMethod::kPut, L"17/name", {}, {}).toString(), L"17");
}

TEST(RouteTable, APatternThatCannotBeReadRaisesWhereItIsTried) {
  EXPECT_THROW(takerOf({L"[", L"state"}, L"state"), boost::regex_error);
  EXPECT_EQ(takerOf({L"state", L"["}, L"state"), 0);
}

}  // namespace
