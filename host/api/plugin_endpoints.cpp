#include "api/plugin_endpoints.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <stdexcept>
#include <utility>

#include "answers/json_reader.h"
#include "answers/refusal_kinds.h"
#include "api/api_path.h"
#include "http_method.h"
#include "plugin_extensions.h"
#include "text.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

const std::map<std::string, std::int32_t>& methodCodes() {
  static const std::map<std::string, std::int32_t> kCodes{{"GET", HttpMethod::kGet},
                                                          {"POST", HttpMethod::kPost},
                                                          {"PUT", HttpMethod::kPut},
                                                          {"DELETE", HttpMethod::kDelete}};
  return kCodes;
}

/// A call of one of the plug-in's operations.
struct PluginCall {
  ovra::service_plugin_interface& plugin;
  std::wstring key;
  std::int32_t method;
  RefusalKinds kinds;
  std::size_t maxBodyDepth;

  Answer operator()(const Call& call, const std::string& body) const {
    const ServiceObject value = readJson(body, maxBodyDepth);
    try {
      return valueAnswer(plugin.handleRequest(key, method, segmentsBehindKey(call),
                                              call.target.parameters,  //
                                              value));
    } catch (const std::exception& failure) {
      return failureAnswer(failure, kinds);
    }
  }

  std::vector<std::wstring> segmentsBehindKey(const Call& call) const {
    const auto count = kApiSegmentCount + 1 + std::count(key.begin(), key.end(), L'/');
    return {call.target.segments.begin() + count, call.target.segments.end()};
  }
};

/// Fills in what every operation of a plug-in has alike.
class PluginEndpoints {
 public:
  PluginEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin, std::size_t maxBodyDepth)
      : m_table(table), m_plugin(plugin), m_maxBodyDepth(maxBodyDepth) {}

  /// `path` is the template below "api" and the version.
  void add(ApiEndpoint endpoint, const std::wstring& key, const std::wstring& path, RefusalKinds kinds) {
    endpoint.path = apiPath(m_plugin, path);
    endpoint.lane = endpoint.isChange ? Lane::kChanges : Lane::kReads;
    endpoint.handle =
        PluginCall{m_plugin, key, methodCodes().at(endpoint.method), std::move(kinds), m_maxBodyDepth};
    m_table.add(std::move(endpoint));
  }

 private:
  EndpointTable& m_table;
  ovra::service_plugin_interface& m_plugin;
  const std::size_t m_maxBodyDepth;
};

/// The least that may do anything when the plug-in's word is none that the host knows.
Role roleIn(const ServiceObject& route) {
  return roleOf(wideToUtf8(route.member(L"role").toString())).value_or(Role::kAdminister);
}

std::vector<std::wstring> referencesIn(const ServiceObject& route) {
  std::vector<std::wstring> names;
  for (const auto field : route.member(L"body")) {
    if (field.value->hasKey(L"refersTo")) names.push_back(field.value->member(L"name").toString());
  }
  return names;
}

void addDescribed(PluginEndpoints& endpoints, const ServiceObject& description) {
  for (const auto element : description.member(L"routes")) {
    const ServiceObject& route = *element.value;
    ApiEndpoint endpoint;
    endpoint.operation = wideToUtf8(route.member(L"id").toString());
    endpoint.method = wideToUtf8(route.member(L"method").toString());
    endpoint.role = roleIn(route);
    endpoint.isChange = route.member(L"effect").toString() != L"read";
    endpoint.references = referencesIn(route);
    endpoints.add(std::move(endpoint), route.member(L"key").toString(), route.member(L"path").toString(),
                  RefusalKinds(description, route));
  }
}

void addUndescribed(PluginEndpoints& endpoints, const std::vector<std::wstring>& keys) {
  for (const std::wstring& key : keys) {
    for (const auto& [method, code] : methodCodes()) {
      ApiEndpoint endpoint;
      endpoint.operation = method + ' ' + wideToUtf8(key);
      endpoint.method = method;
      endpoint.isChange = code != HttpMethod::kGet;
      endpoint.role = endpoint.isChange ? Role::kAdminister : Role::kObserve;
      endpoints.add(std::move(endpoint), key, key + L"/{*}", {});
    }
  }
}

/// The addresses below "api" and the version that are the host's own, now or in time to come.
void requireFree(const std::wstring& key) {
  for (const wchar_t* const own : {L"session", L"health", L"actions", L"jobs", L"alarms", L"history",
                                   L"events/stream", L"bundle", L"tokens", L"about", L"simulator"}) {
    if ((key + L'/').rfind(std::wstring(own) + L'/', 0) != 0) continue;
    throw std::runtime_error("the plug-in handles the path \"" + wideToUtf8(key) +
                             "\", which is one of the host's own");
  }
}

}  // namespace

void addPluginEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin,
                        const std::vector<std::wstring>& keys, std::size_t maxBodyDepth) {
  std::for_each(keys.begin(), keys.end(), requireFree);
  PluginEndpoints endpoints(table, plugin, maxBodyDepth);
  auto* const described = dynamic_cast<ovra::described_plugin_1*>(&plugin);
  described != nullptr ? addDescribed(endpoints, described->describe()) : addUndescribed(endpoints, keys);
}

}  // namespace host
