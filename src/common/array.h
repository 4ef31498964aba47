#ifndef MIRN_COMMON_ARRAY_H
#define MIRN_COMMON_ARRAY_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "builder.h"
#include "enumerations.h"
#include "field.h"
#include "handle.h"
#include "ServiceObject.h"
#include "shared_text.h"

/// A set of disks that volumes are made on. Immutable once built, but for the links that the
/// session fills in.
class Array {
 public:
  class Builder;

  const std::wstring& id() const { return m_id; }
  const SharedText& sharedId() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  const std::wstring& name() const { return m_name; }
  const std::vector<SharedText>& controllerIds() const { return m_controllerIds; }
  ArrayState state() const { return m_state; }
  std::uint64_t totalSize() const { return m_totalSize; }  ///< Bytes.
  std::uint64_t freeSize() const { return m_freeSize; }    ///< Bytes.
  WriteCacheState writeCachePolicy() const { return m_writeCachePolicy; }
  std::uint32_t numDisks() const { return m_numDisks; }
  std::uint32_t numVolumes() const { return m_numVolumes; }

  void setControllerIds(std::vector<SharedText> ids) { m_controllerIds = std::move(ids); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  Array() = default;

  SharedText m_id;
  VEX_HANDLE m_handle = 0;
  SharedText m_name;
  std::vector<SharedText> m_controllerIds;  // filled by the session
  ArrayState m_state = ArrayState::UNKNOWN;
  std::uint64_t m_totalSize = 0;
  std::uint64_t m_freeSize = 0;
  WriteCacheState m_writeCachePolicy = WriteCacheState::UNKNOWN;
  std::uint32_t m_numDisks = 0;
  std::uint32_t m_numVolumes = 0;
};

template <class Walk>
constexpr void Array::fields(Walk& walk) {
  using namespace field;
  walk(text<&Array::m_id>(L"id", L"Names the array; stays the same across restarts."));
  walk(kept<&Array::m_handle>(L"handle"));
  walk(text<&Array::m_name>(L"name", L"The name that the storage library gave it."));
  walk(links<&Array::m_controllerIds>(L"controllerIds", L"controller",
                                      L"The controllers that its disks are on."));
  walk(word<&Array::m_state>(L"state", L"Whether the array takes changes."));
  walk(size<&Array::m_totalSize>(L"totalSize", L"What its disks hold together."));
  walk(size<&Array::m_freeSize>(L"freeSize", L"What no volume has taken yet."));
  walk(word<&Array::m_writeCachePolicy>(L"writeCachePolicy",
                                        L"Whether its disks keep writes in their caches."));
  walk(number<&Array::m_numDisks>(L"numDisks", L"How many disks it has."));
  walk(number<&Array::m_numVolumes>(L"numVolumes", L"How many volumes lie on it."));
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const Array& one, const Array& other);
/// The same, but for how far work is.
bool sameStructure(const Array& one, const Array& other);

/// A forgotten field is stopped by an assertion.
class Array::Builder : public ModelBuilder<Array::Builder, Array> {
 public:
  Builder() : ModelBuilder(Array()) {}

  Builder& id(SharedText value) { return set<&Array::m_id>(std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<&Array::m_handle>(value); }
  Builder& name(SharedText value) { return set<&Array::m_name>(std::move(value)); }
  Builder& state(ArrayState value) { return set<&Array::m_state>(value); }
  Builder& totalSize(std::uint64_t value) { return set<&Array::m_totalSize>(value); }
  Builder& freeSize(std::uint64_t value) { return set<&Array::m_freeSize>(value); }
  Builder& writeCachePolicy(WriteCacheState value) { return set<&Array::m_writeCachePolicy>(value); }
  Builder& numDisks(std::uint32_t value) { return set<&Array::m_numDisks>(value); }
  Builder& numVolumes(std::uint32_t value) { return set<&Array::m_numVolumes>(value); }

  Array build() const&;
  Array build() &&;  ///< Hands out the object itself.
};

#endif
