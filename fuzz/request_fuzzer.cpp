// Any bytes on a connection: the host's reader takes a request that can be understood in one way only, as a
// plain look at the text tells, or refuses it; and it reads in pieces what it reads at once.
#include <algorithm>
#include <boost/asio/buffer.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "answers/answer.h"
#include "http/host_names.h"
#include "http/request_reader.h"
#include "property.h"
#include "service_limits.h"

namespace {

/// Small, so that they are reached.
host::Limits smallLimits() {
  host::Limits limits;
  limits.headerBytes = 1024;
  limits.headerLineBytes = 256;
  limits.headerFields = 8;
  limits.targetBytes = 128;
  limits.bodyBytes = 128;
  return limits;
}

struct Outcome {
  unsigned refused = 0;  ///< Its status; 0 when it was not.
  bool isWhole = false;
  host::Request request;
  std::string body;
  std::size_t taken = 0;  ///< Bytes up to the next request.
};

/// What one reader refuses none takes; by the pieces that it gets, it may still wait for more.
bool same(const Outcome& a, const Outcome& b) {
  if (a.refused != 0 || b.refused != 0) return !a.isWhole && !b.isWhole;
  if (!a.isWhole || !b.isWhole) return a.isWhole == b.isWhole;
  return a.body == b.body && a.taken == b.taken && a.request.method == b.request.method &&
         a.request.target == b.request.target && a.request.authorization == b.request.authorization &&
         a.request.contentType == b.request.contentType && a.request.version == b.request.version &&
         a.request.keepsConnection == b.request.keepsConnection && a.request.hasBody == b.request.hasBody &&
         a.request.awaitsContinue == b.request.awaitsContinue;
}

/// Hands `text` to a reader, `step` bytes at a time.
Outcome read(std::string_view text, std::size_t step) {
  static const host::HostNames names;
  static const host::Limits limits = smallLimits();
  host::RequestReader reader(limits, names, {});
  boost::beast::flat_buffer input;
  Outcome outcome;
  bool hasHeader = false;
  std::size_t given = 0;
  try {
    while (given < text.size() && !outcome.isWhole) {
      const std::string_view part = text.substr(given, step);
      given += part.size();
      input.commit(boost::asio::buffer_copy(input.prepare(part.size()), boost::asio::buffer(part)));
      hasHeader = hasHeader || reader.readHeader(input);
      outcome.isWhole = hasHeader && (reader.isWhole() || reader.readBody(input));
    }
  } catch (const host::Refusal& refusal) {
    outcome.refused = static_cast<unsigned>(refusal.status);
    fuzz::require(!reader.isWhole(), "a refused request is not whole");
    return outcome;
  }
  fuzz::require(!outcome.isWhole || reader.isWhole(), "a request that was read is whole");
  outcome.request = reader.request();
  if (outcome.isWhole) outcome.body = reader.takeBody();
  outcome.taken = given - input.size();
  return outcome;
}

std::string lower(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return result;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// The header of a request as a plain reader sees it.
class PlainHeader {
 public:
  explicit PlainHeader(std::string_view text) {
    while (text.substr(0, 2) == "\r\n") text.remove_prefix(2);
    const std::size_t end = text.find("\r\n\r\n");
    fuzz::require(end != std::string_view::npos, "a request that is read has an end of its header");
    for (std::string_view rest = text.substr(0, end + 2); !rest.empty();) {
      const std::size_t lineEnd = rest.find("\r\n");
      m_lines.push_back(rest.substr(0, lineEnd));
      rest.remove_prefix(lineEnd + 2);
    }
  }

  std::string_view requestLine() const { return m_lines.front(); }
  const std::vector<std::string_view>& lines() const { return m_lines; }

  std::vector<std::string_view> values(std::string_view name) const {
    std::vector<std::string_view> found;
    for (const std::string_view line : m_lines) {
      const std::size_t colon = line.find(':');
      if (line != m_lines.front() && lower(line.substr(0, colon)) == name) {
        found.push_back(trimmed(line.substr(colon + 1)));
      }
    }
    return found;
  }

 private:
  std::vector<std::string_view> m_lines;
};

void requireOneMeaning(const Outcome& outcome, std::string_view text) {
  const PlainHeader header(text);
  for (const std::string_view line : header.lines()) {
    const bool hasControl = std::any_of(line.begin(), line.end(), [](char character) {
      return (static_cast<unsigned char>(character) < 0x20 && character != '\t') || character == 0x7f;
    });
    fuzz::require(!hasControl, "no line of a header that is read holds a control character");
  }
  const auto lengths = header.values("content-length");
  const auto codings = header.values("transfer-encoding");
  fuzz::require(lengths.size() + codings.size() <= 1, "one field at most tells how long the body is");
  fuzz::require(codings.empty() || (lower(codings.front()) == "chunked" && outcome.request.version == 11),
                "a coding is chunked alone, and not of HTTP/1.0");
  fuzz::require(lengths.empty() || std::to_string(outcome.body.size()) ==
                                       lengths.front().substr(std::min(lengths.front().find_first_not_of('0'),
                                                                       lengths.front().size() - 1)),
                "the body is as long as the header says");
  fuzz::require(!lengths.empty() || !codings.empty() || outcome.body.empty(),
                "without a word of a body there is none");
  const auto hosts = header.values("host").size();
  fuzz::require(hosts == 1 || (hosts == 0 && outcome.request.version == 10), "there is one Host");
  fuzz::require(header.values("authorization").size() <= 1, "there is one Authorization at most");
  fuzz::require(header.values("content-type").size() <= 1, "there is one Content-Type at most");
  fuzz::require(
      header.requestLine().substr(0, outcome.request.method.size() + 1) == outcome.request.method + ' ',
      "the method is the first word");
  fuzz::require(outcome.request.target.front() == '/' || outcome.request.target == "*",
                "the target is a path or *");
}

/// The request as the plainest client would send it.
std::string written(const Outcome& outcome) {
  const host::Request& request = outcome.request;
  std::string text = request.method + ' ' + request.target + " HTTP/1.1\r\nHost: localhost\r\n";
  if (!request.authorization.empty()) text += "Authorization: " + request.authorization + "\r\n";
  if (!request.contentType.empty()) text += "Content-Type: " + request.contentType + "\r\n";
  return text + "Content-Length: " + std::to_string(outcome.body.size()) + "\r\n\r\n" + outcome.body;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const Outcome outcome = read(text, size);
  static const std::vector<unsigned> kStatuses{400, 413, 414, 415, 417, 421, 431, 501, 505};
  fuzz::require(outcome.refused == 0 || std::count(kStatuses.begin(), kStatuses.end(), outcome.refused) == 1,
                "a request is refused with a status that says why");
  fuzz::require(same(outcome, read(text, 1)), "byte by byte a request is read as at once");
  if (!outcome.isWhole) return 0;
  requireOneMeaning(outcome, text);
  const std::string plain = written(outcome);
  const Outcome again = read(plain, plain.size());
  fuzz::require(again.isWhole || again.refused == 431, "the plain form of what was read is read");
  if (again.refused != 0) return 0;
  fuzz::require(again.taken == plain.size(), "the plain form is read to its end");
  fuzz::require(again.request.method == outcome.request.method &&
                    again.request.target == outcome.request.target &&
                    again.request.authorization == outcome.request.authorization &&
                    again.request.contentType == outcome.request.contentType && again.body == outcome.body,
                "the plain form means the same");
  return 0;
}
