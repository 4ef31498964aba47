#ifndef MIRN_VEXL2_KIT_FAULT_POINTS_H
#define MIRN_VEXL2_KIT_FAULT_POINTS_H

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "refusal.h"

namespace vexl2 {

/// Orders to let operations fail or take long, and the count of their calls. Safe for many threads.
class FaultPoints {
 public:
  /// For `count` calls of the operation, after `skip` that go through; `kAlways` has no end, 0 is no order
  /// at all.
  struct Order {
    std::uint32_t skip = 0;
    std::uint32_t count = 1;
    std::optional<Status> status;  ///< answer this without doing anything
    std::uint32_t delayMs = 0;     ///< sleep so long first
  };
  static constexpr std::uint32_t kAlways = 0xFFFFFFFF;

  /// Orders to fail one operation are used up one after the other, and so are those to delay it; the `skip`
  /// of one counts from the end of the one before. An order without end is replaced by the next.
  void add(const std::string& operation, const Order& order);
  void clear();

  /// Counts a call, sleeps if that is ordered, and returns the status that is ordered for it, if one is.
  std::optional<Status> pass(const std::string& operation);

  std::uint64_t callsOf(const std::string& operation) const;

 private:
  using Queue = std::deque<Order>;
  struct Point {
    std::uint64_t calls = 0;
    Queue failures;
    Queue delays;
  };

  static void append(Queue& queue, const Order& order);
  static std::optional<Order> take(Queue& queue);

  mutable std::mutex m_mutex;
  std::map<std::string, Point> m_points;
};

}  // namespace vexl2

#endif
