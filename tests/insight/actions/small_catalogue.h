#ifndef MIRN_TESTS_INSIGHT_ACTIONS_SMALL_CATALOGUE_H
#define MIRN_TESTS_INSIGHT_ACTIONS_SMALL_CATALOGUE_H

#include <functional>
#include <string>
#include <vector>

#include "http_method.h"
#include "plugin_extensions.h"
#include "service_exceptions.h"
#include "text.h"

namespace insight {

using ovra::data_transfer::ServiceObject;

inline ServiceObject routeForm(const wchar_t* id, const wchar_t* path, const wchar_t* argument) {
  ServiceObject route;
  route.member(L"id") = std::wstring(id);
  route.member(L"method") = std::wstring(L"PUT");
  route.member(L"key") = std::wstring(L"mirn/volumes");
  route.member(L"path") = std::wstring(path);
  route.member(L"effect") = std::wstring(L"changes");
  route.member(L"role") = std::wstring(L"operate");
  ServiceObject& arguments = route.member(L"arguments");
  arguments = ServiceObject::array();
  if (argument != nullptr) {
    arguments.at(0).member(L"name") = std::wstring(argument) + L"Id";
    arguments.at(0).member(L"refersTo") = std::wstring(argument);
  }
  route.member(L"body") = ServiceObject::array();
  route.member(L"refusals") = ServiceObject::array();
  return route;
}

inline ServiceObject& addField(ServiceObject& route, std::size_t place, const wchar_t* name,
                               const wchar_t* type, bool isRequired) {
  ServiceObject& field = route.member(L"body").at(place);
  field.member(L"name") = std::wstring(name);
  field.member(L"type") = std::wstring(type);
  field.member(L"required") = isRequired;
  field.member(L"help") = std::wstring(L"Help.");
  return field;
}

inline void addWords(ServiceObject& field, const std::vector<const wchar_t*>& words) {
  std::size_t place = 0;
  for (const wchar_t* const word : words) field.member(L"words").at(place++) = std::wstring(word);
}

/// "verify" a volume (START with a yes or no, or CANCEL), "rebuild" it onto a disk, "remove" it, and
/// "rescan", which is about no object; and a route that reads.
inline ServiceObject smallCatalogue() {
  ServiceObject verify = routeForm(L"verify", L"mirn/volumes/{volumeId}/verify", L"volume");
  addWords(addField(verify, 0, L"action", L"text", true), {L"START", L"CANCEL"});
  addField(verify, 1, L"repair", L"boolean", false);
  ServiceObject& refusal = verify.member(L"refusals").at(0);
  refusal.member(L"errorId") = std::wstring(L"INVALID_PARAMETER");
  refusal.member(L"words") = std::wstring(L"Repair is missing");
  refusal.member(L"kind") = std::wstring(L"request");
  ServiceObject rebuild = routeForm(L"rebuild", L"mirn/volumes/{volumeId}/rebuild", L"volume");
  ServiceObject& source = addField(rebuild, 0, L"diskId", L"text", true).member(L"candidates");
  source.member(L"from") = std::wstring(L"disk");
  source.member(L"of") = std::wstring(L"volumeId");
  source.member(L"usages").at(0) = std::wstring(L"SPARE");
  ServiceObject list = routeForm(L"list", L"mirn/volumes", nullptr);
  list.member(L"effect") = std::wstring(L"read");
  ServiceObject description;
  ServiceObject& routes = description.member(L"routes");
  routes.at(0) = list;
  routes.at(1) = verify;
  routes.at(2) = rebuild;
  routes.at(3) = routeForm(L"remove", L"mirn/volumes/{volumeId}", L"volume");
  routes.at(4) = routeForm(L"rescan", L"mirn/volumes/rescan", nullptr);
  return description;
}

/// Answers rehearsals as a test wants it, and remembers the last one.
class RehearsingPlugin final : public ovra::rehearsed_plugin_1 {
 public:
  using Segments = std::vector<std::wstring>;
  /// Refuses with an exception, or does nothing.
  using Judge = std::function<void(const Segments& segments, const ServiceObject& body)>;

  explicit RehearsingPlugin(Judge judge = [](const Segments&, const ServiceObject&) {})
      : m_judge(std::move(judge)) {}

  ServiceObject rehearse(std::wstring, std::int32_t, Segments segments, std::map<std::wstring, std::wstring>,
                         ServiceObject body) override {
    m_judge(segments, body);
    return {};
  }

  ServiceObject rehearseEach(std::wstring, std::int32_t, Segments segments,
                             std::map<std::wstring, std::wstring>, ServiceObject body, std::wstring argument,
                             std::vector<ServiceObject> values) override {
    ServiceObject answers = ServiceObject::array();
    std::size_t place = 0;
    for (const ServiceObject& value : values) {
      body.member(argument) = value;
      ServiceObject& answer = answers.at(place++);
      try {
        m_judge(segments, body);
        answer.member(L"plan") = ServiceObject::object();
      } catch (const ListenerException& refusal) {
        answer.member(L"refusal").member(L"errorId") = utf8ToWide(refusal.getErrorId());
        answer.member(L"refusal").member(L"message") = utf8ToWide(refusal.getMessage());
      }
    }
    return answers;
  }

 private:
  const Judge m_judge;
};

}  // namespace insight

#endif
