#include "module/told_refusals.h"

#include "module/told_routes.h"
#include "support/text_form.h"

using ovra::data_transfer::ServiceObject;

namespace {

/// "ID: words", as behind the class in `failureText`.
bool holds(const ServiceObject& refusals, const std::string& idAndWords) {
  for (auto place = refusals.begin(); place != refusals.end(); ++place) {
    const ServiceObject& told = *(*place).value;
    const std::wstring text = told.member(L"errorId").toString() + L": " + told.member(L"words").toString();
    if (wideToUtf8(text) == idAndWords) return true;
  }
  return false;
}

bool isKey(const ServiceObject& description, const std::wstring& path) {
  const ServiceObject& routes = description.member(L"routes");
  for (auto place = routes.begin(); place != routes.end(); ++place) {
    if ((*place).value->member(L"key").toString() == path) return true;
  }
  return false;
}

}  // namespace

std::string ToldRefusals::placeOf(const Request& request, const std::string& refusal) const {
  const std::size_t behindClass = refusal.find(' ');
  const std::string exceptionClass = refusal.substr(0, behindClass);
  const std::string idAndWords = refusal.substr(behindClass + 1);
  const ServiceObject* const route = toldRouteOf(m_description, request);
  const auto isA = [&](const char* name) { return exceptionClass.find(name) != std::string::npos; };
  // Its words are those of the compiler's library.
  if (!isKey(m_description, request.path)) return isA("out_of_range") ? "without a key" : "";
  if (!route) {
    const bool isOfNoRoute = isA("HttpClientErrorException") && idAndWords == "-: Request is not supported";
    return isOfNoRoute ? "without a route" : "";
  }
  // Listeners raise the class of the report, too.
  const std::string report = wideToUtf8(m_description.member(L"report").member(L"errorId").toString());
  if (exceptionClass == "RequestError" && idAndWords.rfind(report + ": Argument", 0) == 0) {
    return "told as the report";
  }
  if (holds(route->member(L"refusals"), idAndWords)) return "told by its route";
  if (holds(m_description.member(L"refusals"), idAndWords)) return "told of all routes";
  const bool callsLibrary = textForm(route->member(L"operations")) != "[]";
  return callsLibrary && holds(m_description.member(L"statuses"), idAndWords) ? "told as a status" : "";
}
