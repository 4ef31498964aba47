#ifndef MIRN_COMMON_BUILDER_H
#define MIRN_COMMON_BUILDER_H

#include <bitset>
#include <cstddef>
#include <utility>

#include "assert_reporter.h"
#include "builder_flags.h"

/// What a build step says that fails by exception.
constexpr char kNotFullyInitialized[] = "Not fully initialized";

/// The one mechanism behind every builder of the model: one flag for each field that the class's list
/// demands, in the order of the list (field.h), and an instance under construction. A builder derives from
/// it, has one setter a field and one build step, and hands out no object with a forgotten field. Setting a
/// field twice is harmless. Builders live on one stack frame.
///
///     class Disk::Builder : public ModelBuilder<Disk::Builder, Disk> {
///      public:
///       Builder() : ModelBuilder(Disk()) {}
///       Builder& id(std::wstring value) { return set<&Disk::m_id>(std::move(value)); }
///       Builder& size(std::uint64_t value) { return set<&Disk::m_size>(value); }
///       Disk build() const& { return builtOrAssert("src\\common\\disk", __LINE__); }
///       Disk build() && { return movedOrAssert("src\\common\\disk", __LINE__); }
///     };
template <class Derived, class Object>
class ModelBuilder {
 public:
  /// Stores the value, notes that the field has one, and lets calls chain. For whoever walks the list of
  /// fields; others call the setters.
  template <auto kMember>
  Derived& set(field::ValueOf<kMember> value) {
    constexpr std::size_t kFlag = flagOf<kMember>();
    m_flags.set(kFlag);
    m_object.*kMember = std::move(value);
    return static_cast<Derived&>(*this);
  }

 protected:
  explicit ModelBuilder(Object object) : m_object(std::move(object)) {}

  /// A copy of the object. A forgotten field stops the process; where assertions are off, the object comes as
  /// it is.
  Object builtOrAssert([[maybe_unused]] const char* path, [[maybe_unused]] unsigned line) const {
    MIRN_ASSERT_AT(m_flags.count() == m_flags.size(), "m_flags.count() == m_flags.size()", path, line);
    return m_object;
  }

  /// The object itself, which the builder has no longer.
  Object movedOrAssert([[maybe_unused]] const char* path, [[maybe_unused]] unsigned line) {
    MIRN_ASSERT_AT(m_flags.count() == m_flags.size(), "m_flags.count() == m_flags.size()", path, line);
    return std::move(m_object);
  }

  /// A copy of the object. A forgotten field raises `Exception`.
  template <class Exception>
  Object builtOrThrow() const {
    throwUnlessBuilt<Exception>();
    return m_object;
  }

  /// The object itself, which the builder has no longer.
  template <class Exception>
  Object movedOrThrow() {
    throwUnlessBuilt<Exception>();
    return std::move(m_object);
  }

  std::bitset<flagCount<Object>()> m_flags;
  Object m_object;

 private:
  template <class Exception>
  void throwUnlessBuilt() const {
    if (m_flags.count() != m_flags.size()) throw Exception(kNotFullyInitialized);
  }
};

#endif
