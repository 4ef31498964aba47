#include "module/machine_picture.h"

#include "support/body.h"
#include "support/text_form.h"

namespace {

/// What only follows from what becomes of other objects: no effect tells it apart.
const std::multimap<std::wstring, std::string>& derivedKeys() {
  static const std::multimap<std::wstring, std::string> keys = {{L"disk", "freeSize"},
                                                                {L"array", "state"},
                                                                {L"controller", "availableDevices"},
                                                                {L"controller", "availableDisks"}};
  return keys;
}

std::string compared(const std::wstring& type, ServiceObject object) {
  const auto [first, last] = derivedKeys().equal_range(type);
  for (auto key = first; key != last; ++key) object = without(key->second, object);
  return textForm(object);
}

}  // namespace

const std::vector<std::wstring>& MachinePicture::types() {
  static const std::vector<std::wstring> all = {L"controller", L"disk", L"port", L"array", L"volume"};
  return all;
}

MachinePicture::MachinePicture(const ServiceObject& picture) {
  const std::map<std::wstring, std::wstring> lists = {{L"controller", L"controllers"},
                                                      {L"disk", L"enddevices"},
                                                      {L"port", L"ports"},
                                                      {L"array", L"arrays"},
                                                      {L"volume", L"volumes"}};
  for (const std::wstring& type : types()) {
    Objects& objects = m_objects[type];
    const ServiceObject& list = picture.member(lists.at(type));
    for (auto place = list.begin(); place != list.end(); ++place) {
      const ServiceObject& object = *(*place).value;
      objects.emplace(object.member(L"id").toString(), object);
    }
  }
  const ServiceObject& inProgress = picture.member(L"state").member(L"inProgress");
  for (auto place = inProgress.begin(); place != inProgress.end(); ++place) {
    const ServiceObject& work = *(*place).value;
    m_work[work.member(L"objectID").toString()] = work.member(L"action").toString();
  }
}

ObjectIds MachinePicture::having(const std::wstring& type, const std::wstring& key,
                                 const std::wstring& text) const {
  ObjectIds ids;
  for (const auto& [id, object] : objects(type)) {
    if (object.member(key).toString() == text) ids.insert(id);
  }
  return ids;
}

ObjectIds MachinePicture::arraysOf(const std::wstring& id) const {
  if (objects(L"array").count(id) != 0) return {id};
  for (const wchar_t* const type : {L"disk", L"volume"}) {
    const auto found = objects(type).find(id);
    if (found == objects(type).end()) continue;
    const std::wstring array = found->second.member(L"arrayId").toString();
    if (!array.empty()) return {array};
  }
  return {};
}

ObjectChanges changesOf(const std::wstring& type, const MachinePicture& before, const MachinePicture& after) {
  ObjectChanges changes;
  for (const auto& [id, object] : before.objects(type)) {
    const auto now = after.objects(type).find(id);
    if (now == after.objects(type).end()) {
      changes.went.insert(id);
    } else if (compared(type, object) != compared(type, now->second)) {
      changes.changed.insert(id);
    }
  }
  for (const auto& [id, object] : after.objects(type)) {
    if (before.objects(type).count(id) == 0) changes.came.insert(id);
  }
  return changes;
}
