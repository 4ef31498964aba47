#ifndef MIRN_COMMON_FIELD_KINDS_H
#define MIRN_COMMON_FIELD_KINDS_H

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "enumerations.h"
#include "field.h"
#include "list_form.h"
#include "published_form.h"

/// How the kinds of field.h go on the wire. Each has
///
/// - `put`: writes a value into a form, under its key;
/// - `describe`: tells that in the schema of the field;
/// - `same`: whether two values read the same to clients, without making their forms.
///
/// A class may have a kind of its own with these three, for a field that none fits. For sources only.
namespace field {

/// Whether a comparison sees how far the machine's work is.
enum class Progress { COUNTS, IGNORED };

template <class List, class Owner>
bool sameFields(const Owner& one, const Owner& other, Progress progress);

namespace kinds {

using ovra::data_transfer::ServiceObject;

void describeAs(ServiceObject& schema, const wchar_t* type);
void describeAsOrNull(ServiceObject& schema, const wchar_t* type);
void describeWords(ServiceObject& schema, const std::vector<std::wstring>& words);

struct ByValue {
  template <class Value>
  static bool same(const Value& one, const Value& other, Progress) {
    return one == other;
  }
};

struct Text : ByValue {
  static void put(PublishedForm& form, const wchar_t* key, const std::wstring& value) {
    form.text(key, value);
  }
  static void describe(ServiceObject& schema) { describeAs(schema, L"string"); }
};

struct TextOrNull : ByValue {
  static void put(PublishedForm& form, const wchar_t* key, const std::wstring& value) {
    form.part(key, value.empty() ? ServiceObject::null() : ServiceObject(value));
  }
  static void describe(ServiceObject& schema) { describeAsOrNull(schema, L"string"); }
};

struct Link : Text {};
struct LinkOrNull : TextOrNull {};

struct Links : ByValue {
  template <class TextList>
  static void put(PublishedForm& form, const wchar_t* key, const TextList& value) {
    form.part(key, textsOf(value));
  }
  static void describe(ServiceObject& schema) {
    describeAs(schema, L"array");
    describeAs(schema.member(L"items"), L"string");
  }
};

struct Number : ByValue {
  static void put(PublishedForm& form, const wchar_t* key, std::uint64_t value) { form.number(key, value); }
  static void describe(ServiceObject& schema);
};

struct Size : ByValue {
  static void put(PublishedForm& form, const wchar_t* key, std::uint64_t value) { form.size(key, value); }
  static void describe(ServiceObject& schema);
};

struct Hexadecimal : ByValue {
  static void put(PublishedForm& form, const wchar_t* key, std::uint64_t value);
  static void describe(ServiceObject& schema);
};

struct Flag : ByValue {
  static void put(PublishedForm& form, const wchar_t* key, bool value) { form.flag(key, value); }
  static void describe(ServiceObject& schema) { describeAs(schema, L"boolean"); }
};

/// Two values with one word read the same.
template <class Enumeration>
struct Word {
  static void put(PublishedForm& form, const wchar_t* key, Enumeration value) {
    form.text(key, toText(value));
  }
  static void describe(ServiceObject& schema) { describeWords(schema, wordsOf<Enumeration>()); }
  static bool same(Enumeration one, Enumeration other, Progress) {
    return one == other || toText(one) == toText(other);
  }
};

template <class Enumeration>
struct Words : ByValue {
  static void put(PublishedForm& form, const wchar_t* key, const std::set<Enumeration>& value) {
    std::vector<std::wstring> texts;
    texts.reserve(value.size());
    for (const Enumeration each : value) texts.push_back(toText(each));
    form.texts(key, texts);
  }
  static void describe(ServiceObject& schema) {
    describeAs(schema, L"array");
    describeWords(schema.member(L"items"), wordsOf<Enumeration>());
  }
};

}  // namespace kinds
}  // namespace field

#endif
