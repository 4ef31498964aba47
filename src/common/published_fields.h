#ifndef MIRN_COMMON_PUBLISHED_FIELDS_H
#define MIRN_COMMON_PUBLISHED_FIELDS_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "field_kinds.h"
#include "list_form.h"

/// The published form of whatever tells its fields (field.h), and the form's schema. For sources only.
namespace field {

template <class List, class Owner>
ovra::data_transfer::ServiceObject formOf(const Owner& owner);

/// Writes the fields of one object into a form.
template <class Owner>
class Publisher {
 public:
  Publisher(PublishedForm& form, const Owner& owner) : m_form(form), m_owner(owner) {}

  template <class Kind, auto kMember>
  void operator()(const Field<Kind, kMember>& field) {
    if (field.isPublished(m_owner)) put<Kind>(field.name, m_owner.*kMember);
  }

  template <auto kMember>
  void operator()(const Field<kinds::Kept, kMember>&) {}

  template <auto kMember>
  void operator()(const Field<kinds::Deciding, kMember>&) {}

  template <class List>
  void operator()(const Group<List>& group) {
    m_form.part(group.name, formOf<List>(m_owner));
  }

  template <class List, auto kMember>
  void operator()(const Field<kinds::Spread<List>, kMember>& field) {
    if (!field.isPublished(m_owner)) return;
    Publisher<ValueOf<kMember>> publisher(m_form, m_owner.*kMember);
    List::fields(publisher);
  }

 private:
  template <class Kind, class Value>
  void put(const wchar_t* key, const Value& value) {
    if constexpr (Optional<Value>::value) {
      if (value) Kind::put(m_form, key, *value);
    } else {
      Kind::put(m_form, key, value);
    }
  }

  PublishedForm& m_form;
  const Owner& m_owner;
};

/// The published form by the list of `List`, which is the object's own class as a rule: an object, or the
/// null value when no field is published.
///
///     return field::formOf<Volume>(volume);
template <class List, class Owner>
ovra::data_transfer::ServiceObject formOf(const Owner& owner) {
  PublishedForm form;
  Publisher<Owner> publisher(form, owner);
  List::fields(publisher);
  return form.take();
}

/// Collects what the fields tell.
class Describer {
 public:
  using ServiceObject = ovra::data_transfer::ServiceObject;

  template <class Kind, auto kMember>
  void operator()(const Field<Kind, kMember>& field) {
    Kind::describe(add(field, Optional<ValueOf<kMember>>::value));
  }

  template <auto kMember>
  void operator()(const Field<kinds::Kept, kMember>&) {}

  template <auto kMember>
  void operator()(const Field<kinds::Deciding, kMember>&) {}

  template <class List>
  void operator()(const Group<List>& group) {
    kinds::Part<List>::describe(add(group, false));
  }

  template <class List, auto kMember>
  void operator()(const Field<kinds::Spread<List>, kMember>& field) {
    const std::wstring outer = m_condition;
    if (field.condition != nullptr) m_condition = both(outer, field.condition);
    List::fields(*this);
    m_condition = outer;
  }

  ServiceObject take();

 private:
  static std::wstring both(const std::wstring& one, const wchar_t* other);

  /// The schema of one more field, to be completed by its kind.
  ServiceObject& add(const Facts& facts, bool isOptional);

  std::wstring m_condition;  // of everything that comes; empty: none
  ServiceObject m_properties = ServiceObject::object();
  ServiceObject m_required = ServiceObject::array();
  std::size_t m_requiredCount = 0;
};

/// The schema of the published form, close to JSON Schema: an object with
/// - `type`: "object";
/// - `properties`: under each key `type` ("string", "integer", "boolean", "array", "object", or a list of
///   such a word and "null"), `description`, and where it applies `enum` (all words), `pattern`, `minimum`,
///   `items`, `properties`, `required`, `unit` ("bytes", "percent"), `condition` (words: when it is there),
///   `refersTo` (the type of object that it is the id of), `progress` (true: moves by itself);
/// - `required`: the keys that are always there.
template <class List>
ovra::data_transfer::ServiceObject schemaOf() {
  Describer describer;
  List::fields(describer);
  return describer.take();
}

namespace kinds {

/// Puts the members of a schema into one that has a description already.
void describeObject(ServiceObject& schema, ServiceObject whole);

/// Two of them read the same when all of their fields do.
template <class List>
struct ByFields {
  template <class Value>
  static bool same(const Value& one, const Value& other, Progress progress) {
    return sameFields<List>(one, other, progress);
  }
};

template <class List>
struct Spread : ByFields<List> {};

template <class List>
struct Part : ByFields<List> {
  template <class Value>
  static void put(PublishedForm& form, const wchar_t* key, const Value& value) {
    form.part(key, formOf<List>(value));
  }
  static void describe(ServiceObject& schema) { describeObject(schema, schemaOf<List>()); }
};

template <class List>
struct Parts {
  template <class Value>
  static void put(PublishedForm& form, const wchar_t* key, const std::vector<Value>& values) {
    form.part(key, listOf(values, [](const Value& value) { return formOf<List>(value); }));
  }
  static void describe(ServiceObject& schema) {
    describeAs(schema, L"array");
    describeObject(schema.member(L"items"), schemaOf<List>());
  }
  template <class Value>
  static bool same(const std::vector<Value>& one, const std::vector<Value>& other, Progress progress) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [progress](const Value& left, const Value& right) {
                        return sameFields<List>(left, right, progress);
                      });
  }
};

}  // namespace kinds
}  // namespace field

#endif
