#include "ServiceObject.h"

#include <boost/lexical_cast.hpp>
#include <limits>
#include <sstream>
#include <utility>

#include "assert_reporter.h"
#include "text.h"

namespace ovra {
namespace data_transfer {

namespace {

constexpr char kNotArray[] = "ServiceObject is not a valid array";
constexpr char kNotObject[] = "ServiceObject is not a valid object";
constexpr char kNotParsable[] = "ServiceObject cannot be parsed to Object";
constexpr char kNotWalkable[] = "ServiceObject is not an array or an object";

constexpr char kSourcePath[] = "src\\ServiceObject";
constexpr unsigned kEndAssertionLine = 628;

/// Truncates toward zero; what does not fit gives the most negative number, as the processor does.
std::int64_t truncated(double value) {
  constexpr double kLimit = 9223372036854775808.0;  // 2 to the 63
  if (value >= -kLimit && value < kLimit) return static_cast<std::int64_t>(value);
  return std::numeric_limits<std::int64_t>::min();
}

}  // namespace

const ServiceObject kNullObject;

struct ServiceObject::ToString : boost::static_visitor<std::wstring> {
  std::wstring operator()(ServiceObjectNull) const { return {}; }
  std::wstring operator()(bool value) const { return value ? L"1" : L"0"; }
  std::wstring operator()(std::int64_t value) const { return utf8ToWide(std::to_string(value)); }
  std::wstring operator()(std::uint64_t value) const { return utf8ToWide(std::to_string(value)); }
  std::wstring operator()(double value) const {
    std::ostringstream text;
    text << std::fixed << value;
    return utf8ToWide(text.str());
  }
  std::wstring operator()(const std::wstring& value) const { return value; }
  template <class Container>
  std::wstring operator()(const Owned<Container>&) const {
    return {};
  }
};

struct ServiceObject::ToInt64 : boost::static_visitor<std::int64_t> {
  std::int64_t operator()(ServiceObjectNull) const { return 0; }
  std::int64_t operator()(bool value) const { return value ? 1 : 0; }
  std::int64_t operator()(std::int64_t value) const { return value; }
  std::int64_t operator()(std::uint64_t value) const { return static_cast<std::int64_t>(value); }
  std::int64_t operator()(double value) const { return truncated(value); }
  std::int64_t operator()(const std::wstring& value) const {
    std::int64_t number = 0;
    return boost::conversion::try_lexical_convert(value, number) ? number : 0;
  }
  template <class Container>
  std::int64_t operator()(const Owned<Container>&) const {
    return 0;
  }
};

struct ServiceObject::ToBool : boost::static_visitor<bool> {
  bool operator()(ServiceObjectNull) const { return false; }
  bool operator()(bool value) const { return value; }
  bool operator()(std::int64_t value) const { return value == 0; }
  bool operator()(std::uint64_t value) const { return value == 0; }
  bool operator()(double value) const { return value == 0.0; }
  bool operator()(const std::wstring& value) const {
    std::int64_t number = 0;
    if (!boost::conversion::try_lexical_convert(value, number) || number < 0) return false;
    bool truth = false;
    return boost::conversion::try_lexical_convert(value, truth) && truth;
  }
  template <class Container>
  bool operator()(const Owned<Container>&) const {
    return false;
  }
};

ServiceObject::ServiceObject() = default;
ServiceObject::ServiceObject(unsigned int value) : m_value(std::uint64_t{value}) {}
ServiceObject::ServiceObject(const std::wstring& value) : m_value(value) {}
ServiceObject::ServiceObject(const wchar_t* value) { *this = std::wstring(value); }
ServiceObject::ServiceObject(bool value) : m_value(value) {}
ServiceObject::ServiceObject(const ServiceObject& other) = default;
ServiceObject::ServiceObject(ServiceObject&& other) noexcept { swap(other); }
ServiceObject::~ServiceObject() = default;

ServiceObject ServiceObject::null() { return {}; }

ServiceObject ServiceObject::array() {
  ServiceObject result;
  result.m_value = Owned<Array>();
  return result;
}

ServiceObject ServiceObject::object() {
  ServiceObject result;
  result.m_value = Owned<Object>();
  return result;
}

ServiceObject ServiceObject::real(double value) {
  ServiceObject result;
  result.m_value = value;
  return result;
}

ServiceObject& ServiceObject::operator=(ServiceObject other) {
  swap(other);
  return *this;
}

ServiceObject& ServiceObject::operator=(std::uint64_t value) {
  m_value = value;
  return *this;
}

ServiceObject& ServiceObject::operator=(std::int64_t value) {
  m_value = value;
  return *this;
}

ServiceObject& ServiceObject::operator=(bool value) {
  m_value = value;
  return *this;
}

ServiceObject& ServiceObject::operator=(const std::wstring& value) {
  m_value = value;
  return *this;
}

ServiceObject& ServiceObject::operator=(std::wstring&& value) {
  m_value = std::move(value);
  return *this;
}

void ServiceObject::swap(ServiceObject& other) { m_value.swap(other.m_value); }

bool ServiceObject::isNull() const { return boost::get<ServiceObjectNull>(&m_value) != nullptr; }
bool ServiceObject::isArray() const { return children() != nullptr; }
bool ServiceObject::isObject() const { return members() != nullptr; }
int ServiceObject::which() const { return m_value.which(); }

ServiceObject::Array* ServiceObject::children() {
  auto* const owned = boost::get<Owned<Array>>(&m_value);
  return owned ? &**owned : nullptr;
}

ServiceObject::Object* ServiceObject::members() {
  auto* const owned = boost::get<Owned<Object>>(&m_value);
  return owned ? &**owned : nullptr;
}

const ServiceObject::Array* ServiceObject::children() const {
  const auto* const owned = boost::get<Owned<Array>>(&m_value);
  return owned ? &**owned : nullptr;
}

const ServiceObject::Object* ServiceObject::members() const {
  const auto* const owned = boost::get<Owned<Object>>(&m_value);
  return owned ? &**owned : nullptr;
}

ServiceObject& ServiceObject::at(std::size_t index) {
  if (isNull()) m_value = Owned<Array>();
  Array* const elements = children();
  if (!elements) throw ServiceObjectException(kNotArray);
  while (elements->size() <= index) elements->push_back(new ServiceObject);
  return (*elements)[index];
}

ServiceObject& ServiceObject::member(const std::wstring& key) {
  if (isNull()) m_value = Owned<Object>();
  Object* const object = members();
  if (!object) throw ServiceObjectException(kNotObject);
  return (*object)[key];
}

const ServiceObject& ServiceObject::member(const std::wstring& key) const {
  if (isNull()) return kNullObject;
  const Object* const object = members();
  if (!object) throw ServiceObjectException(kNotObject);
  try {
    return object->at(key);
  } catch (const boost::bad_index&) {
    // Never reached: a map reports a missing key by the wider bad_ptr_container_operation, which passes.
    return kNullObject;
  }
}

bool ServiceObject::hasKey(const std::wstring& key) const {
  const Object* const object = members();
  if (!object) throw ServiceObjectException(kNotObject);
  return object->find(key) != object->end();
}

const ServiceObject::Object& ServiceObject::asObject() const {
  const Object* const object = members();
  if (!object) throw ServiceObjectException(kNotParsable);
  return *object;
}

ServiceObject::iterator ServiceObject::begin() const {
  if (const Array* const elements = children()) return iterator(elements->begin());
  if (const Object* const object = members()) return iterator(object->begin());
  throw ServiceObjectException(kNotWalkable);
}

ServiceObject::iterator ServiceObject::end() const {
  MIRN_ASSERT_AT(isArray() || isObject(), "isArray() || isObject()", kSourcePath, kEndAssertionLine);
  if (const Array* const elements = children()) return iterator(elements->end());
  if (const Object* const object = members()) return iterator(object->end());
  throw ServiceObjectException(kNotWalkable);
}

std::wstring ServiceObject::toString() const { return boost::apply_visitor(ToString(), m_value); }
std::int64_t ServiceObject::toInt64() const { return boost::apply_visitor(ToInt64(), m_value); }
bool ServiceObject::toBool() const { return boost::apply_visitor(ToBool(), m_value); }

double ServiceObject::asReal() const {
  const double* const value = boost::get<double>(&m_value);
  return value ? *value : 0.0;
}

namespace {

struct Dereference : boost::static_visitor<ServiceObject::iterator::value_type> {
  ServiceObject::iterator::value_type operator()(ServiceObject::Array::const_iterator position) const {
    return {std::wstring(), &*position};
  }
  ServiceObject::iterator::value_type operator()(ServiceObject::Object::const_iterator position) const {
    return {position->first, position->second};
  }
};

struct Advance : boost::static_visitor<> {
  template <class Position>
  void operator()(Position& position) const {
    ++position;
  }
};

}  // namespace

ServiceObject::iterator::value_type ServiceObject::iterator::operator*() const {
  return boost::apply_visitor(Dereference(), m_position);
}

ServiceObject::iterator& ServiceObject::iterator::operator++() {
  boost::apply_visitor(Advance(), m_position);
  return *this;
}

bool ServiceObject::iterator::operator==(const iterator& other) const {
  return m_position == other.m_position;
}

}  // namespace data_transfer
}  // namespace ovra
