#include "fault_points.h"

#include <chrono>
#include <thread>

namespace vexl2 {

void FaultPoints::append(Queue& queue, const Order& order) {
  if (!queue.empty() && queue.back().count == kAlways) queue.pop_back();
  queue.push_back(order);
}

void FaultPoints::add(const std::string& operation, const Order& order) {
  if (order.count == 0) return;
  const std::lock_guard<std::mutex> lock(m_mutex);
  Point& point = m_points[operation];
  append(order.status ? point.failures : point.delays, order);
}

void FaultPoints::clear() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  for (auto& [operation, point] : m_points) {
    point.failures.clear();
    point.delays.clear();
  }
}

/// What the front order says of this call, if it is for it; a spent order leaves the queue.
std::optional<FaultPoints::Order> FaultPoints::take(Queue& queue) {
  if (queue.empty()) return {};
  Order& front = queue.front();
  if (front.skip > 0) {
    --front.skip;
    return {};
  }
  const Order order = front;
  if (front.count != kAlways && --front.count == 0) queue.pop_front();
  return order;
}

std::optional<Status> FaultPoints::pass(const std::string& operation) {
  std::optional<Order> failure;
  std::optional<Order> delay;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    Point& point = m_points[operation];
    ++point.calls;
    failure = take(point.failures);
    delay = take(point.delays);
  }
  if (delay) std::this_thread::sleep_for(std::chrono::milliseconds(delay->delayMs));
  return failure ? failure->status : std::nullopt;
}

std::uint64_t FaultPoints::callsOf(const std::string& operation) const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = m_points.find(operation);
  return found == m_points.end() ? 0 : found->second.calls;
}

}  // namespace vexl2
