#ifndef MIRN_TESTS_SUPPORT_BODY_H
#define MIRN_TESTS_SUPPORT_BODY_H

#include <initializer_list>
#include <string>
#include <utility>

#include "ServiceObject.h"
#include "text.h"

/// Request bodies in the words of a test:
///
///     body({{"action", "START"}, {"repair", true}, {"disks", list({"41", "42"})}})

using ovra::data_transfer::ServiceObject;

struct BodyField {
  BodyField(std::string name, const char* text) : key(std::move(name)), value(utf8ToWide(text)) {}
  BodyField(std::string name, bool flag) : key(std::move(name)), value(flag) {}
  BodyField(std::string name, unsigned number) : key(std::move(name)), value(number) {}
  BodyField(std::string name, ServiceObject part) : key(std::move(name)), value(std::move(part)) {}

  std::string key;
  ServiceObject value;
};

/// Sets one field.
inline void set(ServiceObject& object, const BodyField& field) {
  object.member(utf8ToWide(field.key)) = field.value;
}

inline ServiceObject body(std::initializer_list<BodyField> fields) {
  ServiceObject object = ServiceObject::object();
  for (const BodyField& field : fields) set(object, field);
  return object;
}

/// A copy of an object, but for one field.
inline ServiceObject without(const std::string& key, const ServiceObject& object) {
  ServiceObject rest = ServiceObject::object();
  for (auto member = object.begin(); member != object.end(); ++member) {
    if ((*member).key != utf8ToWide(key)) rest.member((*member).key) = *(*member).value;
  }
  return rest;
}

inline ServiceObject list(std::initializer_list<const char*> texts) {
  ServiceObject elements = ServiceObject::array();
  std::size_t count = 0;
  for (const char* text : texts) elements.at(count++) = utf8ToWide(text);
  return elements;
}

#endif
