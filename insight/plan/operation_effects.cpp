#include "plan/operation_effects.h"

namespace insight {

namespace {

using ovra::data_transfer::ServiceObject;

std::wstring textIn(const ServiceObject& form, const wchar_t* key) {
  return form.hasKey(key) ? form.member(key).toString() : std::wstring();
}

TellsWhen whenIn(const ServiceObject& form) {
  if (!form.hasKey(L"when")) return {};
  const ServiceObject& when = form.member(L"when");
  return {textIn(when, L"field"), textIn(when, L"word")};
}

TellsShape shapeIn(const ServiceObject& form) {
  if (!form.hasKey(L"becomes")) return {};
  const ServiceObject& told = form.member(L"becomes");
  return {textIn(told, L"level"), textIn(told, L"size"), textIn(told, L"disks"), textIn(told, L"array"),
          told.hasKey(L"fillsArray") && told.member(L"fillsArray").toBool()};
}

OperationEffect effectOf(const ServiceObject& form) {
  OperationEffect effect;
  effect.fate = textIn(form, L"fate");
  effect.type = textIn(form, L"type");
  effect.argument = textIn(form, L"argument");
  effect.relation = textIn(form, L"relation");
  effect.text = textIn(form, L"text");
  effect.when = whenIn(form);
  effect.where = textIn(form, L"where");
  effect.except = textIn(form, L"except");
  effect.becomes = shapeIn(form);
  return effect;
}

OperationEffects effectsIn(const ServiceObject& route) {
  OperationEffects all;
  if (route.hasKey(L"effects")) {
    for (const auto each : route.member(L"effects")) all.effects.push_back(effectOf(*each.value));
  }
  if (route.hasKey(L"work")) {
    for (const auto each : route.member(L"work")) {
      all.works.push_back({textIn(*each.value, L"kind"), textIn(*each.value, L"on"), whenIn(*each.value)});
    }
  }
  return all;
}

}  // namespace

std::map<std::wstring, OperationEffects> effectsOf(const ServiceObject& description) {
  std::map<std::wstring, OperationEffects> all;
  for (const auto each : description.member(L"routes"))
    all.emplace(textIn(*each.value, L"id"), effectsIn(*each.value));
  return all;
}

}  // namespace insight
