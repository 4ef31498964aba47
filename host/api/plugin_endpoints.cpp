#include "api/plugin_endpoints.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <utility>

#include "answers/refusal_kinds.h"
#include "api/api_path.h"
#include "api/plugin_call.h"
#include "api/plugin_read.h"
#include "http_method.h"
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

/// Fills in what every operation of a plug-in has alike.
class PluginEndpoints {
 public:
  PluginEndpoints(EndpointTable& table, const PluginFaces& faces, const JsonBounds& bodies,
                  const ChangePlans& plans)
      : m_table(table), m_faces(faces), m_bodies(bodies), m_plans(plans) {}

  /// `path` is the template below "api" and the version.
  void add(ApiEndpoint endpoint, const std::wstring& key, const std::wstring& path, RefusalKinds kinds,
           const ReadRules& rules = {}) {
    const PluginCall call{m_faces,
                          key,
                          methodCodes().at(endpoint.method),
                          endpoint.isChange,
                          std::move(kinds),
                          m_bodies,
                          endpoint.operation,
                          m_plans};
    endpoint.path = apiPath(m_faces.plugin, path);
    endpoint.lane = endpoint.isChange ? Lane::kChanges : Lane::kReads;
    endpoint.handle = call;
    endpoint.takesDryRun = true;
    if (endpoint.isChange) endpoint.planSchema = m_plans.schema;
    if (m_faces.rehearsed) {
      endpoint.rehearse = [call](const Call& request, const std::string& body) {
        return call.rehearse(request, body);
      };
    }
    if (!endpoint.isChange) endpoint.begin = readingBy(call, rules);
    m_table.add(std::move(endpoint));
  }

 private:
  static decltype(ApiEndpoint::begin) readingBy(const PluginCall& call, ReadRules rules) {
    rules.ask = call;
    return [rules = std::make_shared<const ReadRules>(std::move(rules))](
               std::shared_ptr<const Call> request, const std::shared_ptr<Exchange>& exchange,
               std::string body) {
      std::make_shared<PluginRead>(*rules, std::move(request), std::move(body))->begin(exchange);
    };
  }

  EndpointTable& m_table;
  const PluginFaces m_faces;
  const JsonBounds m_bodies;
  const ChangePlans m_plans;
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

/// The answer is of its moment, whatever the revision: so the plug-in tells it.
bool isMomentary(const ServiceObject& route) {
  return route.hasKey(L"answer") && route.member(L"answer").hasKey(L"momentary") &&
         route.member(L"answer").member(L"momentary").toBool();
}

void addDescribed(PluginEndpoints& endpoints, const ServiceObject& description, Revisions* revisions) {
  for (const auto element : description.member(L"routes")) {
    const ServiceObject& route = *element.value;
    ApiEndpoint endpoint;
    endpoint.operation = wideToUtf8(route.member(L"id").toString());
    endpoint.method = wideToUtf8(route.member(L"method").toString());
    endpoint.role = roleIn(route);
    endpoint.isChange = route.member(L"effect").toString() != L"read";
    endpoint.references = referencesIn(route);
    endpoints.add(std::move(endpoint), route.member(L"key").toString(), route.member(L"path").toString(),
                  RefusalKinds(description, route), {{}, isMomentary(route), revisions});
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
  for (const wchar_t* const own :
       {L"session", L"health", L"actions", L"jobs", L"alarms", L"history", L"events/stream", L"readiness",
        L"bundle", L"tokens", L"about", L"simulator"}) {
    if ((key + L'/').rfind(std::wstring(own) + L'/', 0) != 0) continue;
    throw std::runtime_error("the plug-in handles the path \"" + wideToUtf8(key) +
                             "\", which is one of the host's own");
  }
}

}  // namespace

void addPluginEndpoints(EndpointTable& table, ovra::service_plugin_interface& plugin,
                        const std::vector<std::wstring>& keys, const JsonBounds& bodies, Revisions* revisions,
                        const ChangePlans& plans) {
  std::for_each(keys.begin(), keys.end(), requireFree);
  const PluginFaces faces(plugin);
  PluginEndpoints endpoints(table, faces, bodies, plans);
  if (!faces.described) return addUndescribed(endpoints, keys);
  addDescribed(endpoints, faces.described->describe(), revisions);
}

}  // namespace host
