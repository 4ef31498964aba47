#ifndef MIRN_TESTS_SUPPORT_FIELD_SAMPLES_H
#define MIRN_TESTS_SUPPORT_FIELD_SAMPLES_H

#include <boost/optional.hpp>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "enumerations.h"
#include "field.h"
#include "raid_range.h"
#include "shared_text.h"
#include "text.h"

/// What tests make of a class's list of fields: values for all of them, and all the ways to change one.

/// Gives a field another value, which reads differently to clients.
class ChangeValue {
 public:
  static void of(std::wstring& value) { value += L"'"; }
  static void of(SharedText& value) { value = value.text() + L"'"; }
  static void of(bool& value) { value = !value; }
  template <class Number>
  static std::enable_if_t<std::is_unsigned<Number>::value> of(Number& value) {
    ++value;
  }

  template <class Enumeration>
  static std::enable_if_t<std::is_enum<Enumeration>::value> of(Enumeration& value) {
    value = other(value);
  }

  static void of(std::vector<std::wstring>& value) { value.emplace_back(L"another"); }
  static void of(std::vector<SharedText>& value) { value.emplace_back(L"another"); }

  template <class Enumeration>
  static void of(std::set<Enumeration>& value) {
    if (value.erase(Enumeration{}) == 0) value.insert(Enumeration{});
  }

  static void of(boost::optional<StripSize>& value) {
    value = other(value.value_or(StripSize::SIZE_UNKNOWN));
  }
  static void of(boost::optional<StripSizeByDisks>& value) {
    value = StripSizeByDisks{{7, StripSize::SIZE_2KB}};
  }

  template <class Value>
  static std::enable_if_t<!std::is_convertible<const Value&, const std::wstring&>::value> of(
      std::vector<Value>& value) {
    value.pop_back();
  }

 private:
  /// A value with another word.
  template <class Enumeration>
  static Enumeration other(Enumeration value) {
    int number = 0;
    while (wordOf(static_cast<Enumeration>(number)) == wordOf(value)) ++number;
    return static_cast<Enumeration>(number);
  }

  template <class Enumeration>
  static std::wstring wordOf(Enumeration value) {
    if constexpr (std::is_same<Enumeration, RaidRange>::value) {
      return std::to_wstring(static_cast<int>(value));
    } else {
      return toText(value);
    }
  }
};

/// Which part of the interface a field plays, as far as a comparison goes.
enum class Weight { PUBLISHED, LINK, DECIDING, KEPT };

/// One field to change, down to the fields of its parts.
template <class Model>
struct FieldChange {
  std::string name;  ///< As lines_of.h writes it: "verify.errors".
  bool isProgress;
  Weight weight;
  std::function<void(Model&)> apply;
};

template <class Model, class Owner>
class CollectChanges {
 public:
  using Changes = std::vector<FieldChange<Model>>;
  using OwnerIn = std::function<Owner&(Model&)>;

  CollectChanges(Changes& changes, std::string prefix, OwnerIn ownerIn)
      : m_changes(changes), m_prefix(std::move(prefix)), m_ownerIn(std::move(ownerIn)) {}

  template <class Kind, auto kMember>
  void operator()(const field::Field<Kind, kMember>& field) {
    add(field, Weight::PUBLISHED);
  }
  template <auto kMember>
  void operator()(const field::Field<field::kinds::Link, kMember>& field) {
    add(field, Weight::LINK);
  }
  template <auto kMember>
  void operator()(const field::Field<field::kinds::LinkOrNull, kMember>& field) {
    add(field, Weight::LINK);
  }
  template <auto kMember>
  void operator()(const field::Field<field::kinds::Links, kMember>& field) {
    add(field, Weight::LINK);
  }
  template <auto kMember>
  void operator()(const field::Field<field::kinds::Kept, kMember>& field) {
    add(field, Weight::KEPT);
  }
  template <auto kMember>
  void operator()(const field::Field<field::kinds::Deciding, kMember>& field) {
    add(field, Weight::DECIDING);
  }

  template <class List, auto kMember>
  void operator()(const field::Field<field::kinds::Spread<List>, kMember>&) {
    descend<List, kMember>(m_prefix);
  }
  template <class List, auto kMember>
  void operator()(const field::Field<field::kinds::Part<List>, kMember>& field) {
    descend<List, kMember>(m_prefix + wideToUtf8(field.name) + ".");
  }
  template <class List>
  void operator()(const field::Group<List>& group) {
    CollectChanges inGroup(m_changes, m_prefix + wideToUtf8(group.name) + ".", m_ownerIn);
    List::fields(inGroup);
  }

 private:
  template <class List, auto kMember>
  void descend(const std::string& prefix) {
    using Part = field::ValueOf<kMember>;
    CollectChanges<Model, Part> inPart(
        m_changes, prefix, [ownerIn = m_ownerIn](Model& model) -> Part& { return ownerIn(model).*kMember; });
    List::fields(inPart);
  }

  template <class Kind, auto kMember>
  void add(const field::Field<Kind, kMember>& field, Weight weight) {
    m_changes.push_back({m_prefix + wideToUtf8(field.name), field.isProgress, weight,
                         [ownerIn = m_ownerIn](Model& model) { ChangeValue::of(ownerIn(model).*kMember); }});
  }

  Changes& m_changes;
  const std::string m_prefix;
  const OwnerIn m_ownerIn;
};

/// Every field of the model, each with a change of it alone:
///
///     for (const auto& change : changesOf<Volume>()) {
///       Volume changed = volume;
///       change.apply(changed);
///
/// A list of objects loses its last one, which must be there.
template <class Model>
std::vector<FieldChange<Model>> changesOf() {
  std::vector<FieldChange<Model>> changes;
  CollectChanges<Model, Model> collect(changes, "", [](Model& model) -> Model& { return model; });
  Model::fields(collect);
  return changes;
}

/// Sets fields of a builder to values by their kind: texts to the field's name, numbers to its place in the
/// list, flags to true, and all else to the value of a new object.
template <class Builder>
class FillBuilder {
 public:
  /// Sets all fields but the one at the place `left` among the flags.
  explicit FillBuilder(Builder& builder, std::size_t left = SIZE_MAX) : m_builder(builder), m_left(left) {}

  template <class Kind, auto kMember>
  void operator()(const field::Field<Kind, kMember>& field) {
    if constexpr (hasFlag<kMember>()) {
      if (field.hasFlag && m_place++ != m_left) m_builder.template set<kMember>(filled<kMember>(field.name));
    }
  }
  template <class List>
  void operator()(const field::Group<List>&) {}

 private:
  void fill(std::wstring& value, const wchar_t* name) const { value = name; }
  void fill(SharedText& value, const wchar_t* name) const { value = name; }
  void fill(bool& value, const wchar_t*) const { value = true; }
  template <class Value>
  void fill([[maybe_unused]] Value& value, const wchar_t*) const {
    if constexpr (std::is_unsigned<Value>::value) value = static_cast<Value>(m_place);
  }

  template <auto kMember>
  field::ValueOf<kMember> filled(const wchar_t* name) {
    using Value = field::ValueOf<kMember>;
    if constexpr (std::is_default_constructible<Value>::value) {
      Value value{};
      fill(value, name);
      return value;
    } else {
      typename Value::Builder part;
      FillBuilder<typename Value::Builder> fillPart(part);
      Value::fields(fillPart);
      return part.build();
    }
  }

  Builder& m_builder;
  const std::size_t m_left;
  std::size_t m_place = 0;
};

/// A builder with all fields set but the one at the place `left` among the flags.
template <class Model>
typename Model::Builder filledBuilder(std::size_t left = SIZE_MAX) {
  typename Model::Builder builder;
  FillBuilder<typename Model::Builder> fill(builder, left);
  Model::fields(fill);
  return builder;
}

#endif
