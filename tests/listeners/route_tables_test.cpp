#include <gtest/gtest.h>

#include <regex>

#include "arrays_listener.h"
#include "basic_listener.h"
#include "controllers_listener.h"
#include "disks_listener.h"
#include "enddevices_listener.h"
#include "events_listener.h"
#include "listeners/listener_requests.h"
#include "ports_listener.h"
#include "raids_listener.h"
#include "support/by_name.h"
#include "support/expected_file.h"
#include "volumes_listener.h"

namespace {

struct RouteRow {
  std::int32_t method;
  std::wstring pattern;
};

struct TableRow {
  std::string name;
  std::string key;  ///< The listener's path key, as clients write it.
  std::unique_ptr<BaseListener> (*make)(FakeSession&);
  std::vector<RouteRow> routes;  ///< All of them; within a method in order of registration.
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
  for (const RouteRow& row : GetParam().routes) expected[row.method].push_back(row.pattern);
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
  for (const RouteRow& row : GetParam().routes) {
    const std::size_t group = row.pattern.find(L"([[:alnum:]]+)");
    if (group != 0) continue;
    const std::string rest = wideToUtf8(row.pattern.substr(std::wstring(L"([[:alnum:]]+)").size()));
    EXPECT_EQ(outcomeOf(*m_listener, {row.method, "7-1" + rest, {}, {}}), notFound()) << rest;
    EXPECT_NE(outcomeOf(*m_listener, {row.method, "7a1" + rest, {}, {}}), notFound()) << rest;
  }
}

/// What heads a route's section in the document of the routes: a group of the pattern has a name there.
std::regex headingOf(const TableRow& table, const RouteRow& route) {
  static const std::map<std::int32_t, std::string> methods = {
      {kGet, "GET"}, {kPost, "POST"}, {kPut, "PUT"}, {kDelete, "DELETE"}};
  const std::string group = "([[:alnum:]]+)";
  std::string path = wideToUtf8(route.pattern);
  for (auto place = path.find(group); place != std::string::npos; place = path.find(group)) {
    path.replace(place, group.size(), "\\{[[:alpha:]]+\\}");
  }
  return std::regex("\n### `" + methods.at(route.method) + " " + table.key + (path.empty() ? "" : "/") +
                    path + "`\n");
}

TEST_P(RouteTables, AreDocumented) {
  const std::string document = readExpectedFile(MIRN_ROUTE_DOCUMENT);
  for (const RouteRow& route : GetParam().routes) {
    EXPECT_TRUE(std::regex_search(document, headingOf(GetParam(), route)))
        << "docs/api.md lacks a route; give it a row in tools/make-api-doc: " << wideToUtf8(route.pattern);
  }
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
