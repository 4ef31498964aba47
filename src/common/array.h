#ifndef MIRN_COMMON_ARRAY_H
#define MIRN_COMMON_ARRAY_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "builder.h"
#include "enumerations.h"
#include "handle.h"
#include "ServiceObject.h"

/// A set of disks that volumes are made on. Immutable once built, but for the links that the
/// session fills in.
class Array {
 public:
  class Builder;

  const std::wstring& id() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  const std::wstring& name() const { return m_name; }
  const std::vector<std::wstring>& controllerIds() const { return m_controllerIds; }
  ArrayState state() const { return m_state; }
  std::uint64_t totalSize() const { return m_totalSize; }  ///< Bytes.
  std::uint64_t freeSize() const { return m_freeSize; }    ///< Bytes.
  WriteCacheState writeCachePolicy() const { return m_writeCachePolicy; }
  std::uint32_t numDisks() const { return m_numDisks; }
  std::uint32_t numVolumes() const { return m_numVolumes; }

  void setControllerIds(std::vector<std::wstring> ids) { m_controllerIds = std::move(ids); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  Array() = default;

  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  std::wstring m_name;
  std::vector<std::wstring> m_controllerIds;  // filled by the session
  ArrayState m_state = ArrayState::UNKNOWN;
  std::uint64_t m_totalSize = 0;
  std::uint64_t m_freeSize = 0;
  WriteCacheState m_writeCachePolicy = WriteCacheState::UNKNOWN;
  std::uint32_t m_numDisks = 0;
  std::uint32_t m_numVolumes = 0;
};

/// A forgotten field is stopped by an assertion.
class Array::Builder : public ModelBuilder<Array::Builder, Array, 9> {
 public:
  Builder() : ModelBuilder(Array()) {}

  Builder& id(std::wstring value) { return set<0>(m_object.m_id, std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<1>(m_object.m_handle, value); }
  Builder& name(std::wstring value) { return set<2>(m_object.m_name, std::move(value)); }
  Builder& state(ArrayState value) { return set<3>(m_object.m_state, value); }
  Builder& totalSize(std::uint64_t value) { return set<4>(m_object.m_totalSize, value); }
  Builder& freeSize(std::uint64_t value) { return set<5>(m_object.m_freeSize, value); }
  Builder& writeCachePolicy(WriteCacheState value) { return set<6>(m_object.m_writeCachePolicy, value); }
  Builder& numDisks(std::uint32_t value) { return set<7>(m_object.m_numDisks, value); }
  Builder& numVolumes(std::uint32_t value) { return set<8>(m_object.m_numVolumes, value); }

  Array build() const;
};

#endif
