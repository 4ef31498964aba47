#ifndef MIRN_COMMON_FIELD_H
#define MIRN_COMMON_FIELD_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>

/// The vocabulary in which a class tells its fields, each in one line of one list:
///
///     struct Progress {
///       std::wstring volumeId;
///       std::uint32_t done = 0;
///       std::optional<VolumeState> state;
///
///       template <class Walk>
///       static constexpr void fields(Walk& walk) {
///         walk(field::text<&Progress::volumeId>(L"volumeId", L"The volume at work."));
///         walk(field::number<&Progress::done>(L"done", L"How far it is.").measuredIn(field::kPercent));
///         walk(field::word<&Progress::state>(L"state", L"The volume's state, where it has changed."));
///       }
///     };
///
/// Whoever needs something of each field walks the list with an object of its own, which is called once a
/// field, in order. From the list come
///
/// - the published form (`formOf`) and its schema (`schemaOf`), see published_fields.h;
/// - the comparison of two objects (`sameFields`), see field_comparison.h;
/// - the flags of the class's builder, see builder.h: one a field, in the order of the list, but for those
///   that say `withoutFlag`;
/// - the tests' samples.
///
/// A class of the model tells its private members; an answer that is no object of the model is a plain struct
/// as above. A member that is `std::optional` is published while it has a value.
///
/// The list itself is cheap to include; the walks belong into sources.
namespace field {

/// How a field goes on the wire, and what comes with that: field_kinds.h.
namespace kinds {

struct Text;
struct TextOrNull;
struct Link;
struct LinkOrNull;
struct Links;
struct Number;
struct Size;
struct Hexadecimal;
struct Flag;
template <class Enumeration>
struct Word;
template <class Enumeration>
struct Words;
template <class List>
struct Part;
template <class List>
struct Parts;
template <class List>
struct Spread;
struct Kept;
struct Deciding;

}  // namespace kinds

constexpr wchar_t kBytes[] = L"bytes";
constexpr wchar_t kPercent[] = L"percent";

template <class Member>
struct MemberTraits;
template <class V, class O>
struct MemberTraits<V O::*> {
  using Value = V;
  using Owner = O;
};
template <auto kMember>
using ValueOf = typename MemberTraits<decltype(kMember)>::Value;
template <auto kMember>
using OwnerOf = typename MemberTraits<decltype(kMember)>::Owner;

template <class Value>
struct Optional : std::false_type {
  using Bare = Value;
};
template <class Value>
struct Optional<std::optional<Value>> : std::true_type {
  using Bare = Value;
};
/// The member's type, without the `std::optional` around it.
template <auto kMember>
using BareOf = typename Optional<ValueOf<kMember>>::Bare;

/// Whether the member reads as a text, as `std::wstring` and `SharedText` do.
template <auto kMember>
inline constexpr bool kIsText = std::is_convertible_v<const BareOf<kMember>&, const std::wstring&>;

/// One object for each member of each class: its address tells them apart, whatever their types.
template <auto kMember>
struct Identity {
  static constexpr char kId = 0;
};

/// What a field tells of itself, whatever its type.
struct Facts {
  const char* id = nullptr;       ///< The address of its member's `Identity`.
  const wchar_t* name = nullptr;  ///< Its key; of a field that is not published, what the code calls it.
  const wchar_t* help = nullptr;  ///< One line for clients; none of a field that is not published.
  const wchar_t* unit = nullptr;
  const wchar_t* refersTo = nullptr;   ///< The type of object that an id names.
  const wchar_t* condition = nullptr;  ///< When it is published, in words; none: always.
  bool isProgress = false;             ///< Moves by itself while the machine works.
  bool hasFlag = true;                 ///< The builder demands it.
};

/// One field: the kind of its published form, and the member that holds it.
template <class FieldKind, auto kTheMember>
struct Field : Facts {
  using Kind = FieldKind;
  using Owner = OwnerOf<kTheMember>;
  using Value = ValueOf<kTheMember>;
  static constexpr auto kMember = kTheMember;

  constexpr Field(const wchar_t* fieldName, const wchar_t* fieldHelp) {
    id = &Identity<kTheMember>::kId;
    name = fieldName;
    help = fieldHelp;
  }

  constexpr Field measuredIn(const wchar_t* inUnit) const {
    Field copy = *this;
    copy.unit = inUnit;
    return copy;
  }

  constexpr Field naming(const wchar_t* typeOfObject) const {
    Field copy = *this;
    copy.refersTo = typeOfObject;
    return copy;
  }

  /// Published only of an owner for which `holds` is true; `words` tell clients so.
  constexpr Field onlyIf(bool (*ownerMay)(const Owner&), const wchar_t* words) const {
    Field copy = *this;
    copy.mayPublish = ownerMay;
    copy.condition = words;
    return copy;
  }

  constexpr Field asProgress() const {
    Field copy = *this;
    copy.isProgress = true;
    return copy;
  }

  /// Filled in after the object has been built, or told already by another line of the list.
  constexpr Field withoutFlag() const {
    Field copy = *this;
    copy.hasFlag = false;
    return copy;
  }

  constexpr bool isPublished(const Owner& owner) const { return mayPublish == nullptr || mayPublish(owner); }

  bool (*mayPublish)(const Owner&) = nullptr;
};

/// An object of its own under one key, made of some of the owner's own fields.
template <class FieldList>
struct Group : Facts {
  using List = FieldList;

  constexpr Group(const wchar_t* key, const wchar_t* groupHelp) {
    name = key;
    help = groupHelp;
    hasFlag = false;
  }
};

template <class List>
constexpr auto group(const wchar_t* key, const wchar_t* help) {
  return Group<List>(key, help);
}

template <auto kMember>
constexpr auto text(const wchar_t* key, const wchar_t* help) {
  static_assert(kIsText<kMember>);
  return Field<kinds::Text, kMember>(key, help);
}

/// A text that reads null while it is empty.
template <auto kMember>
constexpr auto textOrNull(const wchar_t* key, const wchar_t* help) {
  static_assert(kIsText<kMember>);
  return Field<kinds::TextOrNull, kMember>(key, help);
}

/// The id of another object, of type `refersTo`, that is looked up once all objects are read. Counts in every
/// comparison, whether it is published or not.
template <auto kMember>
constexpr auto link(const wchar_t* key, const wchar_t* refersTo, const wchar_t* help) {
  static_assert(kIsText<kMember>);
  return Field<kinds::Link, kMember>(key, help).naming(refersTo).withoutFlag();
}

/// The same, null while it names nothing.
template <auto kMember>
constexpr auto linkOrNull(const wchar_t* key, const wchar_t* refersTo, const wchar_t* help) {
  static_assert(kIsText<kMember>);
  return Field<kinds::LinkOrNull, kMember>(key, help).naming(refersTo).withoutFlag();
}

/// The ids of several other objects.
template <auto kMember>
constexpr auto links(const wchar_t* key, const wchar_t* refersTo, const wchar_t* help) {
  return Field<kinds::Links, kMember>(key, help).naming(refersTo).withoutFlag();
}

template <auto kMember>
constexpr auto number(const wchar_t* key, const wchar_t* help) {
  static_assert(std::is_unsigned_v<BareOf<kMember>>);
  return Field<kinds::Number, kMember>(key, help);
}

/// Bytes, written as decimal text so that clients that count in doubles keep them.
template <auto kMember>
constexpr auto size(const wchar_t* key, const wchar_t* help) {
  static_assert(std::is_unsigned_v<BareOf<kMember>>);
  return Field<kinds::Size, kMember>(key, help).measuredIn(kBytes);
}

/// A number written as text: "0x" and lower-case hexadecimal digits without padding.
template <auto kMember>
constexpr auto hexadecimal(const wchar_t* key, const wchar_t* help) {
  static_assert(std::is_unsigned_v<BareOf<kMember>>);
  return Field<kinds::Hexadecimal, kMember>(key, help);
}

template <auto kMember>
constexpr auto flag(const wchar_t* key, const wchar_t* help) {
  static_assert(std::is_same_v<BareOf<kMember>, bool>);
  return Field<kinds::Flag, kMember>(key, help);
}

/// One of the words of an enumeration of enumerations.h.
template <auto kMember>
constexpr auto word(const wchar_t* key, const wchar_t* help) {
  return Field<kinds::Word<BareOf<kMember>>, kMember>(key, help);
}

/// Several of them, in the order of a set.
template <auto kMember>
constexpr auto words(const wchar_t* key, const wchar_t* help) {
  return Field<kinds::Words<typename BareOf<kMember>::value_type>, kMember>(key, help);
}

/// An object of its own under one key; its type has a list, too.
template <auto kMember>
constexpr auto part(const wchar_t* key, const wchar_t* help) {
  return Field<kinds::Part<BareOf<kMember>>, kMember>(key, help);
}

/// The same with another list than the type's own.
template <class List, auto kMember>
constexpr auto part(const wchar_t* key, const wchar_t* help) {
  return Field<kinds::Part<List>, kMember>(key, help);
}

/// A list of objects.
template <auto kMember>
constexpr auto parts(const wchar_t* key, const wchar_t* help) {
  return Field<kinds::Parts<typename BareOf<kMember>::value_type>, kMember>(key, help);
}

/// A member whose own fields are published among the owner's.
template <class List, auto kMember>
constexpr auto spread(const wchar_t* name) {
  return Field<kinds::Spread<List>, kMember>(name, nullptr);
}

/// Carried, never published, and without weight in a comparison: a handle, say.
template <auto kMember>
constexpr auto kept(const wchar_t* name) {
  return Field<kinds::Kept, kMember>(name, nullptr);
}

/// Never published itself, but what is published depends on it: counts in every comparison.
template <auto kMember>
constexpr auto deciding(const wchar_t* name) {
  return Field<kinds::Deciding, kMember>(name, nullptr);
}

/// A field of a kind that its class makes for it.
template <class Kind, auto kMember>
constexpr auto of(const wchar_t* key, const wchar_t* help) {
  return Field<Kind, kMember>(key, help);
}

}  // namespace field

#endif
