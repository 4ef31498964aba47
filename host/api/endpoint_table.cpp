#include "api/endpoint_table.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "text.h"

namespace host {

namespace {

const std::string kGet = "GET";
const std::string kHead = "HEAD";

}  // namespace

const ApiEndpoint* EndpointTable::Resource::find(const std::string& method) const {
  const auto found = endpoints.find(method == kHead ? kGet : method);
  return found == endpoints.end() ? nullptr : &found->second;
}

std::string EndpointTable::Resource::allowed() const {
  std::string methods;
  for (const char* const method : {"GET", "HEAD", "POST", "PUT", "DELETE"}) {
    if (find(method) != nullptr) methods += std::string(method) + ", ";
  }
  return methods + "OPTIONS";
}

void EndpointTable::add(ApiEndpoint endpoint) {
  PathTemplate path(endpoint.path);
  auto place = std::lower_bound(m_resources.begin(), m_resources.end(), path,
                                [](const Resource& resource, const PathTemplate& other) {  //
                                  return resource.path < other;
                                });
  if (place == m_resources.end() || !(place->path == path)) {
    place = m_resources.insert(place, Resource{std::move(path), {}});
  }
  const std::string what = endpoint.method + ' ' + wideToUtf8(endpoint.path);
  std::string method = endpoint.method;
  if (place->endpoints.emplace(std::move(method), std::move(endpoint)).second) return;
  throw std::runtime_error("there are two operations for " + what);
}

const EndpointTable::Resource* EndpointTable::find(const std::vector<std::wstring>& segments) const {
  const auto found = std::find_if(m_resources.begin(), m_resources.end(),
                                  [&](const Resource& resource) { return resource.path.matches(segments); });
  return found == m_resources.end() ? nullptr : &*found;
}

}  // namespace host
