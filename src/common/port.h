#ifndef MIRN_COMMON_PORT_H
#define MIRN_COMMON_PORT_H

#include <cstdint>
#include <string>
#include <utility>

#include "builder.h"
#include "enumerations.h"
#include "handle.h"
#include "ServiceObject.h"

/// A connection point of a controller or end device. Immutable once built, but for the links that the session
/// fills in.
class Port {
 public:
  class Builder;

  const std::wstring& id() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  const std::wstring& address() const { return m_address; }
  std::uint32_t numPhys() const { return m_numPhys; }
  PortLocalDeviceType localDeviceType() const { return m_localDeviceType; }
  const std::wstring& localDeviceId() const { return m_localDeviceId; }
  VEX_HANDLE localDeviceHandle() const { return m_localDeviceHandle; }
  const std::wstring& connectedPortId() const { return m_connectedPortId; }
  VEX_HANDLE connectedPortHandle() const { return m_connectedPortHandle; }

  void setLocalDeviceId(std::wstring id) { m_localDeviceId = std::move(id); }
  void setConnectedPortId(std::wstring id) { m_connectedPortId = std::move(id); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;

 private:
  Port() = default;

  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  std::wstring m_address;
  std::uint32_t m_numPhys = 0;
  PortLocalDeviceType m_localDeviceType = PortLocalDeviceType::UNKNOWN;
  std::wstring m_localDeviceId;  // filled by the session
  VEX_HANDLE m_localDeviceHandle = 0;
  std::wstring m_connectedPortId;  // filled by the session
  VEX_HANDLE m_connectedPortHandle = 0;
};

/// A forgotten field is stopped by an assertion.
class Port::Builder : public ModelBuilder<Port::Builder, Port, 7> {
 public:
  Builder() : ModelBuilder(Port()) {}

  Builder& id(std::wstring value) { return set<0>(m_object.m_id, std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<1>(m_object.m_handle, value); }
  Builder& address(std::wstring value) { return set<2>(m_object.m_address, std::move(value)); }
  Builder& numPhys(std::uint32_t value) { return set<3>(m_object.m_numPhys, value); }
  Builder& localDeviceType(PortLocalDeviceType value) { return set<4>(m_object.m_localDeviceType, value); }
  Builder& localDeviceHandle(VEX_HANDLE value) { return set<5>(m_object.m_localDeviceHandle, value); }
  Builder& connectedPortHandle(VEX_HANDLE value) { return set<6>(m_object.m_connectedPortHandle, value); }

  Port build() const;
};

#endif
