#ifndef MIRN_SIMULATOR_CORE_FAULTS_H
#define MIRN_SIMULATOR_CORE_FAULTS_H

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "model/codes.h"

namespace simulator {

/// Orders to let operations fail or take long. Safe for many threads.
class Faults {
 public:
  /// For calls `skip` + 1 to `skip` + `count` of the operation from now on; `kAlways` has no end.
  struct Order {
    std::uint32_t skip = 0;
    std::uint32_t count = 1;
    std::optional<Status> status;  ///< answer this without doing anything
    std::uint32_t delayMs = 0;     ///< sleep so long first
  };
  static constexpr std::uint32_t kAlways = 0xFFFFFFFF;

  void add(const std::string& operation, Order order);
  void clear();

  /// Counts a call and says what is ordered for it.
  Order next(const std::string& operation);

  std::uint64_t callsOf(const std::string& operation) const;

 private:
  mutable std::mutex m_mutex;
  std::map<std::string, std::vector<Order>> m_orders;
  std::map<std::string, std::uint64_t> m_calls;
};

}  // namespace simulator

#endif
