#include "http/header_scan.h"

#include <algorithm>
#include <string>

#include "answers/answer.h"
#include "http/characters.h"

namespace host {

namespace {

constexpr std::size_t kLongestMethod = 32;
constexpr std::string_view kVersion = "HTTP/1.1";
constexpr std::size_t kMajorAt = 5;

[[noreturn]] void refuse(const std::string& reason) {
  throw Refusal(400, "The request is not valid HTTP: " + reason);
}

void requireMethod(std::string_view method) {
  if (method.empty() || !hasOnly(method, isTokenCharacter)) refuse("its method is not a word");
  if (method.size() > kLongestMethod) throw Refusal(501, "The method is not known here");
}

/// Which minor version it is does not matter: what a later one adds may be ignored.
void requireVersion(std::string_view version) {
  const bool isVersion = version.size() == kVersion.size() && version.substr(0, kMajorAt) == "HTTP/" &&
                         isDigit(version[kMajorAt]) && version[kMajorAt + 1] == '.' &&
                         isDigit(version.back());
  if (!isVersion) refuse("its version is not one of HTTP");
  if (version[kMajorAt] != kVersion[kMajorAt]) throw Refusal(505, "The host speaks HTTP/1.1 and HTTP/1.0");
}

}  // namespace

std::optional<std::size_t> HeaderScan::end(std::string_view text) {
  for (skipOrdinary(text); m_next < text.size(); ++m_next, skipOrdinary(text)) {
    requireCharacter(text);
    requireShort(m_next + 1 - m_lineStart);
    if (m_next >= m_limits.headerBytes) throw Refusal(431, "The header is too large");
    if (text[m_next] != '\n') continue;
    const std::string_view line = text.substr(m_lineStart, m_next - 1 - m_lineStart);
    if (line.empty() && m_hasRequestLine) return ++m_next;
    if (!line.empty()) takeLine(line);
    m_lineStart = m_next + 1;
  }
  return {};
}

/// Most of a header: what neither ends a line, nor is refused, nor is beyond a bound.
void HeaderScan::skipOrdinary(std::string_view text) {
  if (m_next > m_lineStart && text[m_next - 1] == '\r') return;
  const std::size_t end = std::min({text.size(), m_lineStart + longestLine(), m_limits.headerBytes});
  while (m_next < end && !isControl(text[m_next])) ++m_next;
}

/// Of the character at `m_next`.
void HeaderScan::requireCharacter(std::string_view text) const {
  const char character = text[m_next];
  const bool isBehindReturn = m_next > m_lineStart && text[m_next - 1] == '\r';
  if ((character == '\n') != isBehindReturn) refuse("a line does not end in CRLF");
  if (isControl(character) && character != '\r' && character != '\n' && character != '\t') {
    refuse("its header holds a control character");
  }
}

/// With its end.
std::size_t HeaderScan::longestLine() const {
  constexpr std::size_t kLineEnd = 2;
  constexpr std::size_t kAroundTarget = kLongestMethod + kVersion.size() + 2 + kLineEnd;
  return m_hasRequestLine ? m_limits.headerLineBytes + kLineEnd : m_limits.targetBytes + kAroundTarget;
}

/// `length` is what has come of the line, so that nobody waits for the end of one without end.
void HeaderScan::requireShort(std::size_t length) const {
  if (length <= longestLine()) return;
  if (m_hasRequestLine) throw Refusal(431, "A line of the header is too long");
  throw Refusal(414, "The request target is too long");
}

void HeaderScan::takeLine(std::string_view line) {
  if (!m_hasRequestLine) return takeRequestLine(line);
  if (line.front() == ' ' || line.front() == '\t') refuse("a field of its header goes over two lines");
  if (++m_fieldCount > m_limits.headerFields) throw Refusal(431, "The header has too many fields");
}

void HeaderScan::takeRequestLine(std::string_view line) {
  const std::size_t methodEnd = line.find(' ');
  const std::size_t targetEnd = line.rfind(' ');
  if (methodEnd == std::string_view::npos || targetEnd == methodEnd) {
    refuse("its first line is not a method, a target and a version");
  }
  requireMethod(line.substr(0, methodEnd));
  requireVersion(line.substr(targetEnd + 1));
  const std::string_view target = line.substr(methodEnd + 1, targetEnd - methodEnd - 1);
  if (target.size() > m_limits.targetBytes) throw Refusal(414, "The request target is too long");
  if (target.empty() || !hasOnly(target, isTargetCharacter)) {
    refuse("its target holds a character that has to be percent-encoded");
  }
  m_hasRequestLine = true;
  m_start = m_lineStart;
  m_minorVersionAt = m_lineStart + line.size() - 1;
}

}  // namespace host
