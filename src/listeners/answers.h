#ifndef MIRN_LISTENERS_ANSWERS_H
#define MIRN_LISTENERS_ANSWERS_H

#include <string>
#include <vector>

#include "answer_forms.h"
#include "list_form.h"
#include "mirn_exception.h"
#include "service_exceptions.h"
#include "ServiceObject.h"

/// How handlers act and make their answers.

using ovra::data_transfer::ServiceObject;

/// The published forms of the objects that `keep` accepts.
template <class Object, class Predicate>
ServiceObject formsOf(const std::vector<Object>& objects, Predicate keep) {
  return listOf(objects, keep, [](const Object& object) { return object.toServiceObject(); });
}

/// The published forms of all objects.
template <class Object>
ServiceObject formsOf(const std::vector<Object>& objects) {
  return listOf(objects, [](const Object& object) { return object.toServiceObject(); });
}

/// The ids of all objects.
template <class Object>
std::vector<std::wstring> idsOf(const std::vector<Object>& objects) {
  std::vector<std::wstring> ids;
  for (const Object& object : objects) ids.push_back(object.id());
  return ids;
}

/// Builds an answer after an action has happened. It must not fail then: whatever it raises
/// gives the null value.
template <class Build>
ServiceObject answerAfterAction(Build build) {
  try {
    return build();
  } catch (...) {
    return ServiceObject::null();
  }
}

/// Runs an action whose failures clients see under the listener's class, with the same id and text.
template <class Action>
void reportingAsListener(Action action) {
  try {
    action();
  } catch (const MirnException& error) {
    throw ListenerException(error.getErrorId(), error.what());
  }
}

#endif
