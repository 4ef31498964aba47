#ifndef MIRN_HOST_CONTROLS_DISK_NAMES_H
#define MIRN_HOST_CONTROLS_DISK_NAMES_H

#include <functional>
#include <map>
#include <mutex>
#include <string>

#include "ServiceObject.h"

namespace host {

/// Leads from the published ids of disks, which clients see, to the serial numbers, which the simulated
/// library knows. A disk that was listed once is found for as long as the host runs: one that is pulled out
/// is listed no more. Safe from any thread.
class DiskNames {
 public:
  using Value = ovra::data_transfer::ServiceObject;

  /// What the plug-in publishes of its disks now: a list of objects with `id` and `serialNumber`.
  using Lister = std::function<Value()>;

  explicit DiskNames(Lister list) : m_list(std::move(list)) {}

  /// Remembers the disks that are listed now. A list that cannot be had is none.
  void remember();

  /// The serial number of the disk; empty for an id that was never listed, or whose serial number another
  /// disk has, too.
  std::wstring serialNumberOf(const std::wstring& id) const;

 private:
  const Lister m_list;
  mutable std::mutex m_mutex;
  std::map<std::wstring, std::wstring> m_serialNumbers;  ///< by published id
};

}  // namespace host

#endif
