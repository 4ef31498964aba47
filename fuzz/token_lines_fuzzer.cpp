// Any text as the table of tokens: no two of its entries share a name or a token, nothing is lost when it is
// written again, and who is revoked is let in by no other line.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "identity/token_lines.h"
#include "property.h"

namespace {

using host::TokenEntry;
using host::TokenLines;

bool same(const TokenEntry& a, const TokenEntry& b) {
  return a.name == b.name && a.role == b.role && a.hash == b.hash && a.created == b.created;
}

bool same(const std::vector<TokenEntry>& a, const std::vector<TokenEntry>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const TokenEntry& left, const TokenEntry& right) { return same(left, right); });
}

bool has(const std::vector<TokenEntry>& entries, const TokenEntry& wanted) {
  return std::any_of(entries.begin(), entries.end(),
                     [&](const TokenEntry& entry) { return same(entry, wanted); });
}

bool isHash(std::string_view text) {
  return text.size() == 64 && std::all_of(text.begin(), text.end(), [](char digit) {
           return (digit >= '0' && digit <= '9') || (digit >= 'a' && digit <= 'f');
         });
}

void requireSingle(const std::vector<TokenEntry>& entries) {
  std::set<std::string> names;
  std::set<std::string> hashes;
  for (const TokenEntry& entry : entries) {
    fuzz::require(host::isTokenName(entry.name), "an entry has a name");
    fuzz::require(isHash(entry.hash), "an entry has a hash");
    fuzz::require(names.insert(entry.name).second, "no two entries have one name");
    fuzz::require(hashes.insert(entry.hash).second, "no two entries have one token");
  }
}

void requireNothingLost(const TokenLines& lines, std::string_view text) {
  const std::string written = lines.text();
  std::string expected;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    expected += std::string(line) + '\n';
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  fuzz::require(written == expected, "what is written are the lines that were read");
}

void requireRevoked(const TokenLines& lines, const TokenEntry& gone) {
  TokenLines left = lines;
  fuzz::require(left.remove(gone.name), "an entry can be taken away");
  const TokenLines again(left.text());
  for (const TokenEntry& entry : again.entries()) {
    fuzz::require(entry.name != gone.name, "a name that was taken away is gone");
    fuzz::require(entry.hash != gone.hash, "a token that was taken away lets nobody in");
  }
  for (const TokenEntry& entry : lines.entries()) {
    fuzz::require(same(entry, gone) || has(again.entries(), entry), "all others stay");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const TokenLines lines(text);
  requireSingle(lines.entries());
  requireNothingLost(lines, text);
  const TokenLines again(lines.text());
  fuzz::require(same(again.entries(), lines.entries()), "written and read again, the entries are the same");
  fuzz::require(again.faults().size() == lines.faults().size(),
                "written and read again, the faults are the same");
  const std::size_t count = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
  fuzz::require(lines.entries().size() + lines.faults().size() <= count, "a line is one entry or one fault");
  for (const host::TokenFault& fault : lines.faults()) {
    fuzz::require(fault.line >= 1 && fault.line <= count, "a fault names a line of the text");
    fuzz::require(!fault.reason.empty(), "a fault has a reason");
  }
  for (const TokenEntry& entry : lines.entries()) requireRevoked(lines, entry);
  return 0;
}
