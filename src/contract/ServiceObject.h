#ifndef MIRN_CONTRACT_SERVICEOBJECT_H
#define MIRN_CONTRACT_SERVICEOBJECT_H

#include <boost/ptr_container/ptr_deque.hpp>
#include <boost/ptr_container/ptr_map.hpp>
#include <boost/variant.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

namespace ovra {
namespace data_transfer {

/// The null value.
struct ServiceObjectNull {};

/// Raised by the accessors of `ServiceObject`.
class ServiceObjectException : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The structured value of every request and response: null, boolean, signed and unsigned 64-bit number,
/// double, wide text, object (ordered by key) or array.
///
/// An object or array owns its children; copies are deep. A child's reference stays valid until its parent is
/// destroyed or assigned over. A value belongs to one thread at a time.
class ServiceObject {
 public:
  using Object = boost::ptr_map<std::wstring, ServiceObject>;
  using Array = boost::ptr_deque<ServiceObject>;

  class iterator;

  ServiceObject();
  explicit ServiceObject(unsigned int value);
  explicit ServiceObject(const std::wstring& value);
  explicit ServiceObject(const wchar_t* value);
  explicit ServiceObject(bool value);
  /// Any other pointer would convert to a boolean.
  explicit ServiceObject(const void* value) = delete;
  ServiceObject(const ServiceObject& other);
  /// Leaves `other` null.
  ServiceObject(ServiceObject&& other) noexcept;
  ~ServiceObject();

  static ServiceObject null();
  static ServiceObject array();
  static ServiceObject object();
  /// For hosts, whose bodies may hold doubles: there is no constructor from one.
  static ServiceObject real(double value);

  /// By value, so that a finished subtree moves into its place.
  ServiceObject& operator=(ServiceObject other);
  ServiceObject& operator=(std::uint64_t value);
  ServiceObject& operator=(std::int64_t value);
  ServiceObject& operator=(bool value);
  ServiceObject& operator=(const std::wstring& value);
  ServiceObject& operator=(std::wstring&& value);
  /// A pointer would convert to a boolean ahead of a text: say `std::wstring` or `ServiceObject(L"...")`.
  ServiceObject& operator=(const void* value) = delete;
  void swap(ServiceObject& other);

  bool isNull() const;
  bool isArray() const;
  bool isObject() const;
  /// Index of the alternative: 0 null, 1 boolean, 2 signed, 3 unsigned, 4 double, 5 text, 6 object, 7 array.
  int which() const;

  /// The element at `index`. Null becomes an array, and an array grows with nulls until `index` exists.
  ServiceObject& at(std::size_t index);

  /// The child under `key`. Null becomes an object, and a missing key gets a null child.
  ServiceObject& member(const std::wstring& key);

  /// The child under `key`; `kNullObject` for a null value. A missing key raises
  /// `boost::bad_ptr_container_operation`: ask `hasKey` first.
  const ServiceObject& member(const std::wstring& key) const;

  /// Fails on everything that is not an object, null included.
  bool hasKey(const std::wstring& key) const;
  const Object& asObject() const;

  /// Walks an array by index or an object by ascending key.
  iterator begin() const;
  iterator end() const;

  /// The conversions never fail; what cannot be converted gives "", 0 or false.
  std::wstring toString() const;
  std::int64_t toInt64() const;
  /// A number is true when it is zero: inverse to the usual test, and what clients rely on.
  bool toBool() const;
  /// The double, or 0.0 when another alternative is held.
  double asReal() const;

 private:
  /// Owns a container of children. Copies are deep; a move hands the children over, so that swapping two
  /// values never copies a tree. Empty only when moved from.
  template <class Container>
  class Owned {
   public:
    Owned() : m_container(std::make_unique<Container>()) {}
    Owned(const Owned& other) : m_container(std::make_unique<Container>(*other.m_container)) {}
    Owned(Owned&& other) noexcept = default;
    Owned& operator=(Owned other) noexcept {
      m_container.swap(other.m_container);
      return *this;
    }
    ~Owned() = default;

    Container& operator*() { return *m_container; }
    const Container& operator*() const { return *m_container; }

   private:
    std::unique_ptr<Container> m_container;
  };

  using Value = boost::variant<ServiceObjectNull, bool, std::int64_t, std::uint64_t, double, std::wstring,
                               Owned<Object>, Owned<Array>>;

  struct ToString;
  struct ToInt64;
  struct ToBool;

  Array* children();
  Object* members();
  const Array* children() const;
  const Object* members() const;

  Value m_value;
};

/// A position among the children of an array or object.
class ServiceObject::iterator {
 public:
  /// Made fresh on each dereference.
  struct value_type {
    std::wstring key;            ///< The member's key; empty when an array is walked.
    const ServiceObject* value;  ///< Not owned.
  };

  value_type operator*() const;
  iterator& operator++();
  bool operator==(const iterator& other) const;
  bool operator!=(const iterator& other) const { return !(*this == other); }

 private:
  friend class ServiceObject;
  using Position = boost::variant<Array::const_iterator, Object::const_iterator>;

  explicit iterator(Position position) : m_position(position) {}

  Position m_position;
};

/// The one null value that the reading form of `member` refers to.
extern const ServiceObject kNullObject;

}  // namespace data_transfer
}  // namespace ovra

#endif
