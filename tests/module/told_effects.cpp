#include "module/told_effects.h"

#include <stdexcept>

#include "module/told_routes.h"
#include "text.h"

using ovra::data_transfer::ServiceObject;

namespace {

void add(ObjectIds& ids, const ObjectIds& others) { ids.insert(others.begin(), others.end()); }

ObjectIds common(const ObjectIds& ids, const ObjectIds& others) {
  ObjectIds both;
  for (const std::wstring& id : ids) {
    if (others.count(id) != 0) both.insert(id);
  }
  return both;
}

/// The changes that a fate tells of.
ObjectIds& under(const std::wstring& fate, ObjectChanges& changes) {
  if (fate == L"comes") return changes.came;
  if (fate == L"goes") return changes.went;
  return changes.changed;  // what is overwritten shows in what the object is from then on
}

std::vector<std::wstring> textsOf(const ServiceObject& value) {
  if (!value.isArray()) return {value.toString()};
  std::vector<std::wstring> texts;
  for (auto place = value.begin(); place != value.end(); ++place) {
    texts.push_back((*place).value->toString());
  }
  return texts;
}

void tell(std::vector<std::string>& lines, const std::wstring& type, const ObjectIds& ids, const char* what) {
  for (const std::wstring& id : ids) lines.push_back(wideToUtf8(type + L" " + id) + " " + what);
}

}  // namespace

ToldEffects::ToldEffects(const ServiceObject& route, const Request& request, const MachinePicture& before,
                         const MachinePicture& after)
    : m_route(route), m_request(request), m_before(before), m_after(after) {}

/// The condition that stands in the form.
bool ToldEffects::holds(const ServiceObject& form) const {
  if (!form.hasKey(L"when")) return true;
  const ServiceObject& when = form.member(L"when");
  const std::wstring field = when.member(L"field").toString();
  if (!m_request.body.isObject() || !m_request.body.hasKey(field)) return false;
  return !when.hasKey(L"word") || m_request.body.member(field).toString() == when.member(L"word").toString();
}

ToldEffects::Forms ToldEffects::formsUnder(const wchar_t* key) const {
  Forms forms;
  const ServiceObject& list = m_route.member(key);
  for (auto place = list.begin(); place != list.end(); ++place) {
    if (holds(*(*place).value)) forms.push_back((*place).value);
  }
  return forms;
}

std::vector<std::wstring> ToldEffects::valuesOf(const std::wstring& argument) const {
  const Segments parts = partsBehindKey(m_route);
  for (std::size_t place = 0; place < parts.size(); ++place) {
    if (parts[place] == L"{" + argument + L"}") return {m_request.segments[place]};
  }
  if (!m_request.body.isObject() || !m_request.body.hasKey(argument)) return {};
  return textsOf(m_request.body.member(argument));
}

ObjectIds ToldEffects::allOf(const std::wstring& type) const {
  ObjectIds ids;
  for (const MachinePicture* picture : {&m_before, &m_after}) {
    for (const auto& [id, object] : picture->objects(type)) ids.insert(id);
  }
  return ids;
}

/// The objects of the type in the arrays that the values have to do with, before or after.
ObjectIds ToldEffects::inArraysOf(const std::wstring& type, const std::vector<std::wstring>& values) const {
  ObjectIds arrays;
  for (const MachinePicture* picture : {&m_before, &m_after}) {
    for (const std::wstring& value : values) add(arrays, picture->arraysOf(value));
  }
  if (type == L"array") return arrays;
  ObjectIds ids;
  for (const MachinePicture* picture : {&m_before, &m_after}) {
    for (const std::wstring& array : arrays) add(ids, picture->having(type, L"arrayId", array));
  }
  return ids;
}

/// What the objects of the values show under a key, before or after.
ObjectIds ToldEffects::showing(const std::wstring& type, const std::vector<std::wstring>& values,
                               const wchar_t* key) const {
  ObjectIds ids;
  for (const MachinePicture* picture : {&m_before, &m_after}) {
    for (const std::wstring& value : values) {
      const auto found = picture->objects(type).find(value);
      if (found != picture->objects(type).end() && found->second.hasKey(key)) {
        ids.insert(found->second.member(key).toString());
      }
    }
  }
  return ids;
}

/// The ports of the devices, and those that they are connected with.
ObjectIds ToldEffects::portsOf(const std::vector<std::wstring>& devices) const {
  ObjectIds own;
  for (const std::wstring& device : devices) add(own, m_before.having(L"port", L"localDeviceId", device));
  ObjectIds all = showing(L"port", {own.begin(), own.end()}, L"connectedPortId");
  add(all, own);
  return all;
}

ObjectIds ToldEffects::objectsOf(const ServiceObject& effect) const {
  const std::wstring type = effect.member(L"type").toString();
  if (!effect.hasKey(L"argument")) return allOf(type);
  const std::wstring argument = effect.member(L"argument").toString();
  const std::vector<std::wstring> values = valuesOf(argument);
  const std::wstring relation = effect.member(L"relation").toString();
  if (relation == L"journal") return showing(L"volume", values, L"journalingDriveId");
  if (relation == L"ports") return portsOf(values);
  if (relation != L"itself") return inArraysOf(type, values);
  if (argument == L"name") return m_after.having(type, L"name", values.at(0));
  return {values.begin(), values.end()};
}

/// Takes out of the changes what the effect tells of.
void ToldEffects::strike(const ServiceObject& effect, ObjectChanges& changes) const {
  ObjectIds& left = under(effect.member(L"fate").toString(), changes);
  ObjectIds kept;
  if (effect.hasKey(L"except")) {
    for (const std::wstring& id : valuesOf(effect.member(L"except").toString())) kept.insert(id);
  }
  for (const std::wstring& id : objectsOf(effect)) {
    if (kept.count(id) == 0) left.erase(id);
  }
}

std::vector<std::string> ToldEffects::untold() const {
  std::vector<std::string> lines;
  for (const std::wstring& type : MachinePicture::types()) {
    ObjectChanges changes = changesOf(type, m_before, m_after);
    for (const ServiceObject* effect : formsUnder(L"effects")) {
      if (effect->member(L"type").toString() == type) strike(*effect, changes);
    }
    tell(lines, type, changes.came, "came");
    tell(lines, type, changes.went, "went");
    tell(lines, type, changes.changed, "changed");
  }
  return lines;
}

std::set<std::string> ToldEffects::told() const {
  std::set<std::string> texts;
  for (const ServiceObject* effect : formsUnder(L"effects")) {
    texts.insert(wideToUtf8(effect->member(L"text").toString()));
  }
  return texts;
}

std::set<std::string> ToldEffects::seen() const {
  std::set<std::string> texts;
  for (const ServiceObject* effect : formsUnder(L"effects")) {
    ObjectChanges changes = changesOf(effect->member(L"type").toString(), m_before, m_after);
    const ObjectIds& shown = under(effect->member(L"fate").toString(), changes);
    if (!common(objectsOf(*effect), shown).empty()) {
      texts.insert(wideToUtf8(effect->member(L"text").toString()));
    }
  }
  return texts;
}

std::map<std::wstring, std::wstring> ToldEffects::work() const {
  std::map<std::wstring, std::wstring> kinds;
  for (const ServiceObject* work : formsUnder(L"work")) {
    const std::wstring on = work->member(L"on").toString();
    ObjectIds volumes;
    for (const std::wstring& value : valuesOf(on)) {
      if (on == L"volumeId") {
        volumes.insert(value);
      } else {
        add(volumes,
            on == L"name" ? m_after.having(L"volume", L"name", value) : inArraysOf(L"volume", {value}));
      }
    }
    if (volumes.empty()) throw std::logic_error("nothing that the work goes on in");
    for (const std::wstring& volume : volumes) kinds[volume] = work->member(L"kind").toString();
  }
  return kinds;
}
