#ifndef MIRN_COMMON_FIELD_COMPARISON_H
#define MIRN_COMMON_FIELD_COMPARISON_H

#include "published_fields.h"

/// Compares two objects of what tells its fields (field.h), without making their forms. For sources only.
namespace field {

/// Whether two objects publish the same and their links name the same, published or not. What both leave out
/// does not count, nor does what is never published, unless it decides what is. With `Progress::IGNORED` the
/// fields do not count either that say `asProgress`.
template <class List, class Owner>
bool sameFields(const Owner& one, const Owner& other, Progress progress);

template <class Owner>
class Comparison {
 public:
  Comparison(const Owner& one, const Owner& other, Progress progress)
      : m_one(one), m_other(other), m_progress(progress) {}

  template <class Kind, auto kMember>
  void operator()(const Field<Kind, kMember>& field) {
    if (!m_same || (field.isProgress && m_progress == Progress::IGNORED)) return;
    m_same = samePublished<Kind, kMember>(field);
  }

  template <class List>
  void operator()(const Group<List>&) {
    m_same = m_same && sameFields<List>(m_one, m_other, m_progress);
  }

  template <auto kMember>
  void operator()(const Field<kinds::Kept, kMember>&) {}

  template <auto kMember>
  void operator()(const Field<kinds::Deciding, kMember>&) {
    compare<kMember>();
  }
  template <auto kMember>
  void operator()(const Field<kinds::Link, kMember>&) {
    compare<kMember>();
  }
  template <auto kMember>
  void operator()(const Field<kinds::LinkOrNull, kMember>&) {
    compare<kMember>();
  }
  template <auto kMember>
  void operator()(const Field<kinds::Links, kMember>&) {
    compare<kMember>();
  }

  bool same() const { return m_same; }

 private:
  template <auto kMember>
  void compare() {
    m_same = m_same && m_one.*kMember == m_other.*kMember;
  }

  template <class Kind, auto kMember>
  bool samePublished(const Field<Kind, kMember>& field) const {
    const bool isPublished = field.isPublished(m_one);
    if (isPublished != field.isPublished(m_other)) return false;
    return !isPublished || sameValue<Kind>(m_one.*kMember, m_other.*kMember);
  }

  template <class Kind, class Value>
  bool sameValue(const Value& one, const Value& other) const {
    if constexpr (Optional<Value>::value) {
      return one.has_value() == other.has_value() && (!one || Kind::same(*one, *other, m_progress));
    } else {
      return Kind::same(one, other, m_progress);
    }
  }

  const Owner& m_one;
  const Owner& m_other;
  const Progress m_progress;
  bool m_same = true;
};

template <class List, class Owner>
bool sameFields(const Owner& one, const Owner& other, Progress progress) {
  Comparison<Owner> comparison(one, other, progress);
  List::fields(comparison);
  return comparison.same();
}

}  // namespace field

#endif
