#ifndef MIRN_HOST_API_REQUEST_COUNTS_H
#define MIRN_HOST_API_REQUEST_COUNTS_H

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "api/endpoint_table.h"

namespace host {

/// How many requests were answered how, and how long that took. There are as many counters as the table has
/// operations, whatever clients ask for. Counting takes no lock, and is safe from any thread.
class RequestCounts {
 public:
  using Microseconds = std::chrono::microseconds;

  /// What a request counts as that led to no operation, and an answer whose status is none of the usual ones.
  static constexpr char kOtherOperation[] = "unknown";
  static constexpr char kOtherStatus[] = "unknown";

  /// Answers that took at most so many seconds, and beyond the last bound all the others.
  static constexpr std::array<double, 10> kBounds{0.0005, 0.001, 0.005, 0.01, 0.05, 0.1, 0.5, 1, 5, 30};
  static constexpr std::size_t kBuckets = kBounds.size() + 1;

  /// The answers of one operation with one status.
  struct Row {
    std::string operation;
    std::string status;
    std::vector<std::uint64_t> counts;  ///< One for each bucket.
    double seconds = 0;                 ///< That all of them took.
  };

  RequestCounts();
  RequestCounts(const RequestCounts&) = delete;
  RequestCounts& operator=(const RequestCounts&) = delete;
  ~RequestCounts();

  /// Tells the operations apart from now on. Ahead of all counting.
  void know(const EndpointTable& table);

  /// `operation` is its id, empty where there is none.
  void count(const std::string& operation, unsigned status, Microseconds time);

  /// What there was, by operation and status.
  std::vector<Row> rows() const;

 private:
  static constexpr std::size_t kStatuses = 32;  ///< At most so many are told apart.

  struct Counters {
    std::array<std::atomic<std::uint64_t>, kBuckets> counts{};
    std::atomic<std::uint64_t> microseconds{0};
  };
  /// By the place of a status. Made at its first answer.
  using OfOperation = std::array<std::atomic<Counters*>, kStatuses>;

  void know(const std::string& operation);
  static Counters& countersIn(std::atomic<Counters*>& place);

  std::unordered_map<std::string, std::size_t> m_places;  ///< Of the operations.
  std::vector<std::unique_ptr<OfOperation>> m_operations;
};

}  // namespace host

#endif
