#include "catalogue_form.h"

#include <map>

#include "catalogue.h"
#include "http_method.h"
#include "list_form.h"
#include "plugin_identity.h"
#include "schemas.h"
#include "text.h"

using ovra::data_transfer::ServiceObject;
using ovra::request_validator::FieldPresence;
using ovra::request_validator::FieldType;

namespace {

void put(ServiceObject& form, const wchar_t* key, const std::wstring& text) { form.member(key) = text; }

/// Nothing for a null pointer.
void putText(ServiceObject& form, const wchar_t* key, const wchar_t* text) {
  if (text) put(form, key, text);
}

void putCondition(ServiceObject& form, const Condition& when) {
  if (!when.key) return;
  ServiceObject& condition = form.member(L"when");
  put(condition, L"field", when.key);
  putText(condition, L"word", when.word);
}

const wchar_t* typeOf(FieldType type) {
  static const std::map<FieldType, const wchar_t*> kTypes = {{FieldType::kString, L"text"},
                                                             {FieldType::kUnsignedInteger, L"number"},
                                                             {FieldType::kBoolean, L"boolean"},
                                                             {FieldType::kArray, L"list"}};
  return kTypes.at(type);
}

ServiceObject candidatesOf(const Candidates& candidates) {
  ServiceObject form = ServiceObject::object();
  put(form, L"from", candidates.from);
  putText(form, L"of", candidates.of);
  if (!candidates.usages.empty()) form.member(L"usages") = textsOf(candidates.usages);
  return form;
}

ServiceObject fieldForm(const FieldRow& row) {
  ServiceObject form = ServiceObject::object();
  put(form, L"name", row.name);
  put(form, L"type", typeOf(row.type));
  form.member(L"required") = row.presence == FieldPresence::kRequired;
  put(form, L"help", row.help);
  if (!row.words.empty()) form.member(L"words") = textsOf(row.words);
  if (row.range.bounds()) {
    form.member(L"least") = row.range.least;
    form.member(L"most") = row.range.most;
  }
  putText(form, L"unit", row.unit);
  putText(form, L"refersTo", row.refersTo);
  if (row.candidates.from) form.member(L"candidates") = candidatesOf(row.candidates);
  putCondition(form, row.when);
  return form;
}

/// Nothing for a shape of which nothing is told.
void putShape(ServiceObject& form, const Shape& shape) {
  ServiceObject told = ServiceObject::object();
  putText(told, L"level", shape.level);
  putText(told, L"size", shape.size);
  putText(told, L"disks", shape.disks);
  putText(told, L"array", shape.array);
  if (shape.fillsArray) told.member(L"fillsArray") = true;
  if (!told.asObject().empty()) form.member(L"becomes") = told;
}

ServiceObject effectForm(const EffectRow& row) {
  ServiceObject form = ServiceObject::object();
  put(form, L"fate", toText(row.fate));
  put(form, L"type", row.type);
  putText(form, L"argument", row.argument);
  putText(form, L"relation", row.relation);
  put(form, L"text", row.text);
  putCondition(form, row.when);
  putText(form, L"where", row.where);
  putText(form, L"except", row.except);
  putShape(form, row.becomes);
  return form;
}

ServiceObject workForm(const WorkRow& row) {
  ServiceObject form = ServiceObject::object();
  put(form, L"kind", toText(row.kind));
  put(form, L"on", row.on);
  putCondition(form, row.when);
  return form;
}

const wchar_t* methodOf(const RouteRow& row) {
  static const std::map<std::int32_t, const wchar_t*> kMethods = {{HttpMethod::kGet, L"GET"},
                                                                  {HttpMethod::kPost, L"POST"},
                                                                  {HttpMethod::kPut, L"PUT"},
                                                                  {HttpMethod::kDelete, L"DELETE"}};
  return kMethods.at(row.method);
}

const wchar_t* bodyRuleOf(Judgement judgement) {
  switch (judgement) {
    case Judgement::kQuery:
      return L"ignored";
    case Judgement::kNoBodyThenQuery:
    case Judgement::kQueryThenNoBody:
      return L"none";
    case Judgement::kBodyThenQuery:
    case Judgement::kBodyWithinHandler:
      break;
  }
  return L"fields";
}

/// A name in a path is a type of object with "Id" behind it.
ServiceObject argumentForm(const std::wstring& name) {
  ServiceObject form = ServiceObject::object();
  put(form, L"name", name);
  put(form, L"refersTo", name.substr(0, name.size() - 2));
  return form;
}

void putRequest(ServiceObject& form, const RouteRow& row) {
  form.member(L"arguments") = listOf(pathArgumentsOf(row), argumentForm);
  form.member(L"query") = listOf(row.query, fieldForm);
  form.member(L"body") = listOf(row.body, fieldForm);
  put(form, L"bodyRule", bodyRuleOf(row.judgement));
  if (row.judgement == Judgement::kBodyWithinHandler) form.member(L"anyQuery") = true;
}

void putAnswer(ServiceObject& form, const AnswerRow& answer) {
  if (!answer.schema) return;
  put(form.member(L"answer"), L"schema", answer.schema);
  form.member(L"answer").member(L"list") = answer.isList;
  if (answer.isList) form.member(L"answer").member(L"columns") = textsOf(columnsOf(answer.schema));
  if (answer.isMomentary) form.member(L"answer").member(L"momentary") = true;
}

}  // namespace

ServiceObject formOf(const RefusalRow& row) {
  ServiceObject form = ServiceObject::object();
  put(form, L"errorId", utf8ToWide(row.errorId));
  put(form, L"words", row.words);
  put(form, L"kind", toText(row.kind));
  return form;
}

ServiceObject formOf(const RouteRow& row) {
  ServiceObject form = ServiceObject::object();
  put(form, L"id", row.id);
  put(form, L"noun", row.command.noun);
  put(form, L"verb", row.command.verb);
  put(form, L"method", methodOf(row));
  put(form, L"key", keyOf(row));
  put(form, L"path", templateOf(row));
  put(form, L"summary", row.summary);
  put(form, L"description", row.description);
  put(form, L"effect", toText(row.effect));
  put(form, L"role", toText(row.role));
  putRequest(form, row);
  putAnswer(form, row.answer);
  form.member(L"refusals") = listOf(row.refusals, [](const RefusalRow& refusal) { return formOf(refusal); });
  form.member(L"operations") = textsOf(row.call.operations);
  form.member(L"effects") = listOf(row.effects, effectForm);
  form.member(L"work") = listOf(row.works, workForm);
  return form;
}
