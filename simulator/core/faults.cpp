#include "core/faults.h"

#include <algorithm>

namespace simulator {

void Faults::add(const std::string& operation, Order order) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_orders[operation].push_back(order);
}

void Faults::clear() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_orders.clear();
}

Faults::Order Faults::next(const std::string& operation) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  ++m_calls[operation];
  Order result;
  auto& orders = m_orders[operation];
  for (Order& order : orders) {
    if (order.skip > 0) {
      --order.skip;
      continue;
    }
    if (order.count != kAlways) --order.count;
    if (order.status && !result.status) result.status = order.status;
    result.delayMs = std::max(result.delayMs, order.delayMs);
  }
  const auto isSpent = [](const Order& order) { return order.skip == 0 && order.count == 0; };
  orders.erase(std::remove_if(orders.begin(), orders.end(), isSpent), orders.end());
  return result;
}

std::uint64_t Faults::callsOf(const std::string& operation) const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = m_calls.find(operation);
  return found == m_calls.end() ? 0 : found->second;
}

}  // namespace simulator
