#include "module/told_routes.h"

#include <algorithm>
#include <map>

#include "http_method.h"

using ovra::data_transfer::ServiceObject;

namespace {

/// What stands behind a name in a template.
bool isIdentifier(const std::wstring& segment) {
  const auto isOne = [](wchar_t c) {
    return (c >= L'0' && c <= L'9') || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z');
  };
  return !segment.empty() && std::all_of(segment.begin(), segment.end(), isOne);
}

bool matches(const ServiceObject& route, const Request& request) {
  const std::map<std::int32_t, std::wstring> methods = {{HttpMethod::kGet, L"GET"},
                                                        {HttpMethod::kPost, L"POST"},
                                                        {HttpMethod::kPut, L"PUT"},
                                                        {HttpMethod::kDelete, L"DELETE"}};
  const auto method = methods.find(request.method);
  if (method == methods.end() || route.member(L"method").toString() != method->second) return false;
  if (route.member(L"key").toString() != request.path) return false;
  const auto fits = [](const std::wstring& part, const std::wstring& segment) {
    return part.front() == L'{' ? isIdentifier(segment) : part == segment;
  };
  const Segments parts = partsBehindKey(route);
  Segments segments = request.segments;
  if (segments == Segments{L""}) segments.clear();  // the path is that of the key, all the same
  return std::equal(parts.begin(), parts.end(), segments.begin(), segments.end(), fits);
}

}  // namespace

Segments partsBehindKey(const ServiceObject& route) {
  const std::wstring path = route.member(L"path").toString();
  Segments parts;
  std::size_t end = route.member(L"key").toString().size();
  while (end != path.size()) {
    const std::size_t begin = end + 1;
    end = std::min(path.find(L'/', begin), path.size());
    parts.push_back(path.substr(begin, end - begin));
  }
  return parts;
}

const ServiceObject* toldRouteOf(const ServiceObject& description, const Request& request) {
  const ServiceObject& routes = description.member(L"routes");
  for (auto place = routes.begin(); place != routes.end(); ++place) {
    if (matches(*(*place).value, request)) return (*place).value;
  }
  return nullptr;
}
