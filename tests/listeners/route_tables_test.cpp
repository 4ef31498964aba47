#include <gtest/gtest.h>

#include <algorithm>
#include <boost/regex.hpp>
#include <random>
#include <set>

#include "arrays_listener.h"
#include "basic_listener.h"
#include "catalogue.h"
#include "controllers_listener.h"
#include "disks_listener.h"
#include "enddevices_listener.h"
#include "events_listener.h"
#include "listeners/listener_requests.h"
#include "ports_listener.h"
#include "raids_listener.h"
#include "support/by_name.h"
#include "volumes_listener.h"

namespace {

struct PatternRow {
  std::int32_t method;
  std::wstring pattern;
};

struct TableRow {
  std::string name;
  std::string key;  ///< The listener's path key, as clients write it.
  std::unique_ptr<BaseListener> (*make)(FakeSession&);
  std::vector<PatternRow> routes;  ///< All of them; within a method in order of registration.
};

constexpr auto kGet = HttpMethod::kGet;
constexpr auto kPost = HttpMethod::kPost;
constexpr auto kPut = HttpMethod::kPut;
constexpr auto kDelete = HttpMethod::kDelete;

class RouteTables : public testing::TestWithParam<TableRow> {
 protected:
  FakeSession m_session;
  std::unique_ptr<BaseListener> m_listener = GetParam().make(m_session);
};

TEST_P(RouteTables, HoldTheseRoutesInThisOrder) {
  std::map<std::int32_t, std::vector<std::wstring>> expected = {
      {kGet, {}}, {kPost, {}}, {kPut, {}}, {kDelete, {}}};
  for (const PatternRow& row : GetParam().routes) expected[row.method].push_back(row.pattern);
  std::map<std::int32_t, std::vector<std::wstring>> actual;
  for (const auto& [method, routes] : m_listener->routes()) {
    std::vector<std::wstring>& patterns = actual[method];
    for (const Route& route : routes) patterns.push_back(route.pattern);
  }
  EXPECT_EQ(actual, expected);
}

TEST_P(RouteTables, AreNotChangedByRequests) {
  const auto sizes = [this] {
    std::map<std::int32_t, std::size_t> counts;
    for (const auto& [method, routes] : m_listener->routes()) counts[method] = routes.size();
    return counts;
  };
  const auto before = sizes();
  for (const auto method : {kGet, kPost, kPut, kDelete}) {
    EXPECT_EQ(outcomeOf(*m_listener, {method, "no/such/path", {}, {}}), notFound());
  }
  EXPECT_EQ(sizes(), before);
}

TEST_P(RouteTables, TakeIdentifiersOfLettersAndDigitsOnly) {
  for (const PatternRow& row : GetParam().routes) {
    const std::size_t group = row.pattern.find(L"([[:alnum:]]+)");
    if (group != 0) continue;
    const std::string rest = wideToUtf8(row.pattern.substr(std::wstring(L"([[:alnum:]]+)").size()));
    EXPECT_EQ(outcomeOf(*m_listener, {row.method, "7-1" + rest, {}, {}}), notFound()) << rest;
    EXPECT_NE(outcomeOf(*m_listener, {row.method, "7a1" + rest, {}, {}}), notFound()) << rest;
  }
}

/// The place of the pattern that takes the path; none of `patterns`: their number.
std::size_t takerOf(const std::vector<std::wstring>& patterns, const std::wstring& path) {
  const auto taker = std::find_if(patterns.begin(), patterns.end(), [&](const std::wstring& pattern) {
    return boost::regex_match(path, boost::wregex(pattern));
  });
  return static_cast<std::size_t>(taker - patterns.begin());
}

/// Words of paths and odd characters, joined at random.
std::wstring randomPath(std::mt19937& random) {
  static const std::vector<std::wstring> parts = {
      L"/",     L"",      L"7",     L"x9Z",  L"level",      L"rebuild", L"state",  L"config", L"volumes",
      L"ports", L"clear", L"spare", L"name", L"enddevices", L"-",       L"\u00e4", L"{id}",   L"."};
  std::wstring path;
  for (auto count = random() % 5; count > 0; --count) path += parts[random() % parts.size()];
  return path;
}

TEST_P(RouteTables, MatchEveryPathAsTheseRoutesDo) {
  std::map<std::int32_t, std::vector<std::wstring>> expected;
  for (const PatternRow& row : GetParam().routes) expected[row.method].push_back(row.pattern);
  std::mt19937 random(7);
  for (int i = 0; i < 2000; ++i) {
    const std::wstring path = randomPath(random);
    for (const auto& [method, routes] : m_listener->routes()) {
      std::vector<std::wstring> actual;
      for (const Route& route : routes) actual.push_back(route.pattern);
      EXPECT_EQ(takerOf(actual, path), takerOf(expected[method], path)) << wideToUtf8(path);
    }
  }
}

TEST_P(RouteTables, AreTheRowsOfTheirBranchEachBoundOnce) {
  std::multiset<std::wstring> bound;
  for (const RouteId route : m_listener->boundRoutes()) bound.insert(rowOf(route).id);
  std::multiset<std::wstring> told;
  for (const auto* row : catalogue()) {
    if (wideToUtf8(keyOf(*row)) == GetParam().key) told.insert(row->id);
  }
  EXPECT_EQ(bound, told);
  EXPECT_EQ(bound.size(), GetParam().routes.size());
}

template <class Listener>
std::unique_ptr<BaseListener> made(FakeSession& session) {
  return makeOn<Listener>(session);
}

INSTANTIATE_TEST_SUITE_P(
    Listeners, RouteTables,
    testing::Values(
        TableRow{
            "Basic",
            "mirn",
            made<BasicListener>,
            {{kGet, L"state"}, {kGet, L"version"}, {kPost, L"rescan"}, {kGet, L"config"}, {kPut, L"config"}}},
        TableRow{"Volumes",
                 "mirn/volumes",
                 made<VolumesListener>,
                 {{kGet, L""},
                  {kPut, L"([[:alnum:]]+)/marknormal"},
                  {kPut, L"([[:alnum:]]+)/rebuild"},
                  {kPut, L"([[:alnum:]]+)/level"},
                  {kPut, L"([[:alnum:]]+)/init"},
                  {kPut, L"([[:alnum:]]+)/verify"},
                  {kPut, L"([[:alnum:]]+)/size"},
                  {kPut, L"([[:alnum:]]+)/cachepolicy"},
                  {kPut, L"([[:alnum:]]+)/name"},
                  {kDelete, L"([[:alnum:]]+)"},
                  {kPost, L""},
                  {kPut, L"([[:alnum:]]+)/rwh"}}},
        TableRow{"Disks",
                 "mirn/disks",
                 made<DisksListener>,
                 {{kPut, L"([[:alnum:]]+)/clear"},
                  {kPut, L"([[:alnum:]]+)/spare"},
                  {kPut, L"([[:alnum:]]+)/marknormal"},
                  {kPut, L"([[:alnum:]]+)/resetsmart"},
                  {kDelete, L"([[:alnum:]]+)"}}},
        TableRow{"Arrays",
                 "mirn/arrays",
                 made<ArraysListener>,
                 {{kGet, L""},
                  {kGet, L"([[:alnum:]]+)/enddevices"},
                  {kGet, L"([[:alnum:]]+)/volumes"},
                  {kPut, L"([[:alnum:]]+)"},
                  {kPut, L"([[:alnum:]]+)/writecache"}}},
        TableRow{"Controllers",
                 "mirn/controllers",
                 made<ControllersListener>,
                 {{kGet, L""},
                  {kGet, L"([[:alnum:]]+)/enddevices"},
                  {kGet, L"([[:alnum:]]+)/arrays"},
                  {kGet, L"([[:alnum:]]+)/ports"},
                  {kGet, L"([[:alnum:]]+)/volumes"},
                  {kPut, L"([[:alnum:]]+)/readpatrol"},
                  {kPut, L"([[:alnum:]]+)/rohi"}}},
        TableRow{"EndDevices", "mirn/enddevices", made<EndDevicesListener>, {{kGet, L""}}},
        TableRow{"Ports", "mirn/ports", made<PortsListener>, {{kGet, L""}, {kPut, L"([[:alnum:]]+)/locate"}}},
        TableRow{"Raids",
                 "mirn/raids",
                 made<RaidsListener>,
                 {{kGet, L""}, {kGet, L"([[:alnum:]]+)"}, {kGet, L"([[:alnum:]]+)/controllers"}}},
        TableRow{"Events", "mirn/events", made<EventsListener>, {{kGet, L""}}}),
    ByName());

}  // namespace
