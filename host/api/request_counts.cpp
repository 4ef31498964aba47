#include "api/request_counts.h"

#include <algorithm>
#include <iterator>
#include <map>

namespace host {

namespace {

/// What the host and its plug-ins answer with. The place behind the last is that of all others.
constexpr unsigned kUsualStatuses[] = {200, 201, 202, 204, 206, 304, 400, 401, 403, 404, 405, 406, 408, 409,
                                       411, 412, 413, 414, 415, 417, 421, 422, 429, 431, 500, 501, 503, 505};
constexpr std::size_t kUsualCount = std::size(kUsualStatuses);

std::size_t placeOf(unsigned status) {
  const auto* const found = std::lower_bound(std::begin(kUsualStatuses), std::end(kUsualStatuses), status);
  const bool isUsual = found != std::end(kUsualStatuses) && *found == status;
  return isUsual ? static_cast<std::size_t>(found - std::begin(kUsualStatuses)) : kUsualCount;
}

std::string statusAt(std::size_t place) {
  return place < kUsualCount ? std::to_string(kUsualStatuses[place])
                             : std::string(RequestCounts::kOtherStatus);
}

std::size_t bucketOf(RequestCounts::Microseconds time) {
  const double seconds = std::chrono::duration<double>(time).count();
  const auto& bounds = RequestCounts::kBounds;
  return static_cast<std::size_t>(std::lower_bound(bounds.begin(), bounds.end(), seconds) - bounds.begin());
}

}  // namespace

RequestCounts::RequestCounts() {
  static_assert(kUsualCount < kStatuses);
  know(kOtherOperation);
}

RequestCounts::~RequestCounts() {
  for (const auto& operation : m_operations) {
    for (const std::atomic<Counters*>& place : *operation) delete place.load();
  }
}

void RequestCounts::know(const EndpointTable& table) {
  know("listMethods");
  for (const EndpointTable::Resource& resource : table.resources()) {
    for (const auto& [method, endpoint] : resource.endpoints) know(endpoint.operation);
  }
}

void RequestCounts::know(const std::string& operation) {
  if (!m_places.emplace(operation, m_operations.size()).second) return;
  m_operations.push_back(std::make_unique<OfOperation>());
}

void RequestCounts::count(const std::string& operation, unsigned status, Microseconds time) {
  const auto found = m_places.find(operation);
  OfOperation& ofOperation = *m_operations[found == m_places.end() ? 0 : found->second];
  Counters& counters = countersIn(ofOperation[placeOf(status)]);
  counters.counts[bucketOf(time)].fetch_add(1, std::memory_order_relaxed);
  counters.microseconds.fetch_add(static_cast<std::uint64_t>(time.count()), std::memory_order_relaxed);
}

RequestCounts::Counters& RequestCounts::countersIn(std::atomic<Counters*>& place) {
  Counters* present = place.load(std::memory_order_acquire);
  if (present != nullptr) return *present;
  auto made = std::make_unique<Counters>();
  if (place.compare_exchange_strong(present, made.get())) return *made.release();
  return *present;  // somebody was faster
}

std::vector<RequestCounts::Row> RequestCounts::rows() const {
  const std::map<std::string, std::size_t> inOrder(m_places.begin(), m_places.end());
  std::vector<Row> rows;
  for (const auto& [operation, place] : inOrder) {
    for (std::size_t status = 0; status < kStatuses; ++status) {
      const Counters* const counters = (*m_operations[place])[status].load(std::memory_order_acquire);
      if (counters == nullptr) continue;
      Row row{operation, statusAt(status), {}, 0};
      for (const auto& count : counters->counts) row.counts.push_back(count.load(std::memory_order_relaxed));
      row.seconds = static_cast<double>(counters->microseconds.load(std::memory_order_relaxed)) / 1e6;
      rows.push_back(std::move(row));
    }
  }
  return rows;
}

}  // namespace host
