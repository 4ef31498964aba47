#ifndef MIRN_LIBRARY_PHY_INDEX_H
#define MIRN_LIBRARY_PHY_INDEX_H

#include <cstdint>
#include <utility>
#include <vector>

#include "sorted_list.h"
#include "VEXL2.h"

/// What a device takes of a phy's record, as the library gives it.
struct DevicePhy {
  VEX_HANDLE handle;
  VEX_HANDLE endDevice;
  std::uint32_t negotiatedLinkSpeed;
};

/// Finds the first phy of each device, so that thousands of devices need not walk thousands of phys each. A
/// phy without a device (handle 0) is nobody's. For one thread at a time.
class PhyIndex {
 public:
  explicit PhyIndex(std::vector<DevicePhy> phys) : m_phys(sortedByDevice(std::move(phys))) {}

  /// One phy, or none, until the next look-up: a record with these three fields.
  const std::vector<VEX_PHY_INFO>& of(VEX_HANDLE endDevice) {
    m_found.clear();
    if (endDevice == 0) return m_found;
    if (const DevicePhy* const phy = m_search.find(endDevice)) {
      VEX_PHY_INFO& record = m_found.emplace_back();
      record.phyHandle = phy->handle;
      record.endDeviceHandle = phy->endDevice;
      record.negotiatedLinkSpeed = phy->negotiatedLinkSpeed;
    }
    return m_found;
  }

 private:
  struct DeviceOf {
    VEX_HANDLE operator()(const DevicePhy& phy) const { return phy.endDevice; }
  };

  static std::vector<DevicePhy> sortedByDevice(std::vector<DevicePhy> phys) {
    sortStablyBy(DeviceOf(), phys);
    return phys;
  }

  const std::vector<DevicePhy> m_phys;
  const OrderedSearch<DevicePhy, DeviceOf> m_search{DeviceOf(), m_phys};
  std::vector<VEX_PHY_INFO> m_found;
};

#endif
