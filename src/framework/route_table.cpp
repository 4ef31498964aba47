#include "route_table.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "framework_messages.h"
#include "service_exceptions.h"
#include "text.h"

using ovra::common::HttpClientErrorException;
using ovra::data_transfer::ServiceObject;

namespace {

constexpr std::int32_t kNotFound = 404;
constexpr std::int32_t kMethodNotAllowed = 405;

/// A copy, so that a request works on a list of its own. An unknown method is not told apart from an unknown
/// path: it gets an empty list, and the guard stands for a look-up that refuses.
std::vector<Route> routesOf(RouteTable& table, std::int32_t method) {
  try {
    return table[method];
  } catch (const std::out_of_range&) {
    throw HttpClientErrorException(kMethodNotAllowed, wideToUtf8(kMsgMethodNotSupported));
  }
}

/// How a pattern begins that takes the id of an object.
constexpr std::wstring_view kIdentifier = L"([[:alnum:]]+)";

bool begins(std::wstring_view text, std::wstring_view with) { return text.substr(0, with.size()) == with; }

bool ends(std::wstring_view text, std::wstring_view with) {
  return text.size() >= with.size() && text.substr(text.size() - with.size()) == with;
}

bool isOfWords(std::wstring_view pattern) {
  return std::all_of(pattern.begin(), pattern.end(),
                     [](wchar_t sign) { return (sign >= L'a' && sign <= L'z') || sign == L'/'; });
}

/// Whether the path cannot match, for patterns of words, or of an id and then words: nearly every path is
/// told from them by how it ends, which spares compiling them.
bool isOther(std::wstring_view path, std::wstring_view pattern) {
  const bool takesIdentifier = begins(pattern, kIdentifier);
  const std::wstring_view words = pattern.substr(takesIdentifier ? kIdentifier.size() : 0);
  if (!isOfWords(words)) return false;
  return takesIdentifier ? !ends(path, words) : path != words;
}

}  // namespace

ServiceObject routeRequest(RouteTable& table, std::int32_t method, const std::wstring& path,
                           const RequestParameters& parameters, const ServiceObject& body) {
  const std::vector<Route> routes = routesOf(table, method);
  for (const Route& route : routes) {
    if (isOther(path, route.pattern)) continue;
    // Compiled at each request: nothing has to be kept in step with the table.
    const boost::wregex pattern(route.pattern);
    RouteMatch match;
    if (boost::regex_match(path, match, pattern)) return route.handler(match, parameters, body);
  }
  throw HttpClientErrorException(kNotFound, wideToUtf8(kMsgRequestNotSupported));
}
