#ifndef MIRN_COMMON_PORT_H
#define MIRN_COMMON_PORT_H

#include <cstdint>
#include <string>
#include <utility>

#include "builder.h"
#include "enumerations.h"
#include "field.h"
#include "handle.h"
#include "ServiceObject.h"
#include "shared_text.h"

/// A connection point of a controller or end device. Immutable once built, but for the links that the session
/// fills in.
class Port {
 public:
  class Builder;

  const std::wstring& id() const { return m_id; }
  const SharedText& sharedId() const { return m_id; }
  VEX_HANDLE handle() const { return m_handle; }
  const std::wstring& address() const { return m_address; }
  std::uint32_t numPhys() const { return m_numPhys; }
  PortLocalDeviceType localDeviceType() const { return m_localDeviceType; }
  const std::wstring& localDeviceId() const { return m_localDeviceId; }
  VEX_HANDLE localDeviceHandle() const { return m_localDeviceHandle; }
  const std::wstring& connectedPortId() const { return m_connectedPortId; }
  VEX_HANDLE connectedPortHandle() const { return m_connectedPortHandle; }

  void setLocalDeviceId(SharedText id) { m_localDeviceId = std::move(id); }
  void setConnectedPortId(SharedText id) { m_connectedPortId = std::move(id); }

  /// The form that clients see: an object.
  ovra::data_transfer::ServiceObject toServiceObject() const;
  /// The schema of that form, as `field::schemaOf` gives it.
  static ovra::data_transfer::ServiceObject schema();

  /// Every field, see field.h.
  template <class Walk>
  static constexpr void fields(Walk& walk);

 private:
  Port() = default;

  // There are tens of thousands of them: texts by themselves, and then what is half as wide.
  SharedText m_id;
  SharedText m_address;
  SharedText m_localDeviceId;    // filled by the session
  SharedText m_connectedPortId;  // filled by the session
  VEX_HANDLE m_handle = 0;
  VEX_HANDLE m_localDeviceHandle = 0;
  VEX_HANDLE m_connectedPortHandle = 0;
  std::uint32_t m_numPhys = 0;
  PortLocalDeviceType m_localDeviceType = PortLocalDeviceType::UNKNOWN;
};

template <class Walk>
constexpr void Port::fields(Walk& walk) {
  using namespace field;
  walk(text<&Port::m_id>(L"id", L"Names the port; stays the same across restarts."));
  walk(kept<&Port::m_handle>(L"handle"));
  walk(text<&Port::m_address>(L"address", L"Its place: numbers of bus, device, function and port."));
  walk(number<&Port::m_numPhys>(L"numPhys", L"How many lanes it has."));
  walk(word<&Port::m_localDeviceType>(L"localDeviceType", L"What the port belongs to."));
  walk(link<&Port::m_localDeviceId>(L"localDeviceId", L"controller or disk",
                                    L"The controller or device that has it."));
  walk(kept<&Port::m_localDeviceHandle>(L"localDeviceHandle"));
  walk(link<&Port::m_connectedPortId>(L"connectedPortId", L"port",
                                      L"The port at the other end; empty while free."));
  walk(kept<&Port::m_connectedPortHandle>(L"connectedPortHandle"));
}

/// Whether clients see the same, and all links lead to the same objects.
bool sameForm(const Port& one, const Port& other);
/// The same, but for how far work is.
bool sameStructure(const Port& one, const Port& other);

/// A forgotten field is stopped by an assertion.
class Port::Builder : public ModelBuilder<Port::Builder, Port> {
 public:
  Builder() : ModelBuilder(Port()) {}

  Builder& id(SharedText value) { return set<&Port::m_id>(std::move(value)); }
  Builder& handle(VEX_HANDLE value) { return set<&Port::m_handle>(value); }
  Builder& address(SharedText value) { return set<&Port::m_address>(std::move(value)); }
  Builder& numPhys(std::uint32_t value) { return set<&Port::m_numPhys>(value); }
  Builder& localDeviceType(PortLocalDeviceType value) { return set<&Port::m_localDeviceType>(value); }
  Builder& localDeviceHandle(VEX_HANDLE value) { return set<&Port::m_localDeviceHandle>(value); }
  Builder& connectedPortHandle(VEX_HANDLE value) { return set<&Port::m_connectedPortHandle>(value); }

  Port build() const&;
  Port build() &&;  ///< Hands out the object itself.
};

#endif
