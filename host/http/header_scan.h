#ifndef MIRN_HOST_HTTP_HEADER_SCAN_H
#define MIRN_HOST_HTTP_HEADER_SCAN_H

#include <cstddef>
#include <optional>
#include <string_view>

#include "service_limits.h"

namespace host {

/// Finds the end of a request's header while it comes in, and refuses on the way what a reader might take in
/// two ways: line ends other than CRLF, continued lines, control characters, another request line than three
/// words with one blank between them.
class HeaderScan {
 public:
  explicit HeaderScan(const Limits& limits) : m_limits(limits) {}

  /// `text` is what has come of the request, from its first byte; it grows from call to call. The length of
  /// the header with the empty line that ends it, or nothing while that is not there. Raises a `Refusal` 400,
  /// 414, 431, 501 or 505; the place where the next request starts is unknown then.
  std::optional<std::size_t> end(std::string_view text);

  /// Where the request line starts: behind the empty lines that some clients leave behind a body.
  std::size_t start() const { return m_start; }

  /// Where the last digit of the version stands.
  std::size_t minorVersionAt() const { return m_minorVersionAt; }

 private:
  void skipOrdinary(std::string_view text);
  void requireCharacter(std::string_view text) const;
  std::size_t longestLine() const;
  void requireShort(std::size_t length) const;
  void takeLine(std::string_view line);
  void takeRequestLine(std::string_view line);

  const Limits m_limits;
  std::size_t m_next = 0;       // the first byte that was not looked at
  std::size_t m_lineStart = 0;  // of the line under way
  std::size_t m_start = 0;
  std::size_t m_minorVersionAt = 0;
  std::size_t m_fieldCount = 0;
  bool m_hasRequestLine = false;
};

}  // namespace host

#endif
