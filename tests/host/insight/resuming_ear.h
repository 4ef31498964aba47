#ifndef MIRN_TESTS_HOST_INSIGHT_RESUMING_EAR_H
#define MIRN_TESTS_HOST_INSIGHT_RESUMING_EAR_H

#include <cstdint>
#include <string>
#include <utility>

namespace host {

/// What a client makes of a stream that it hears in pieces: judges that each entry comes once, in order, or
/// is told as missing.
class ResumingEar {
 public:
  /// Behind the row 0 of `epoch`.
  explicit ResumingEar(std::string epoch) : m_epoch(std::move(epoch)) {}

  /// Takes the whole events of `body` and leaves what was cut off. Raises `std::runtime_error` at what is
  /// missing, comes twice or out of order.
  void hear(const std::string& body);

  /// Of what was heard last.
  std::string lastId() const { return m_epoch + '.' + std::to_string(m_row); }
  std::uint64_t row() const { return m_row; }

  std::uint64_t entries() const { return m_entries; }
  std::uint64_t gaps() const { return m_gaps; }
  std::uint64_t missing() const { return m_missing; }
  std::uint64_t farewells() const { return m_farewells; }

 private:
  void hearEvent(const std::string& lines);
  void hearEntry(const std::string& data);
  void hearGap(const std::string& data);

  std::string m_epoch;
  std::uint64_t m_row = 0;
  std::uint64_t m_entries = 0;
  std::uint64_t m_gaps = 0;
  std::uint64_t m_missing = 0;
  std::uint64_t m_farewells = 0;
};

}  // namespace host

#endif
