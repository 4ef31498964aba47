#ifndef MIRN_HOST_IDENTITY_TOKEN_LINES_H
#define MIRN_HOST_IDENTITY_TOKEN_LINES_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "identity/role.h"

namespace host {

/// All that is kept of a token.
struct TokenEntry {
  std::string name;  ///< Whose it is, for logs and for revoking it.
  Role role = Role::kObserve;
  std::string hash;     ///< `sha256Hex` of the token.
  std::string created;  ///< RFC 3339.
};

/// A line of the table that lets nobody in.
struct TokenFault {
  std::size_t line;  ///< From 1.
  std::string reason;
};

/// Whether `name` may name a token: 1 to 64 letters, digits, `-`, `_`, `.`, `@`, a letter or digit first.
bool isTokenName(std::string_view name);

/// The table of tokens as text: a line each, "NAME ROLE SHA256HEX CREATED". Empty lines and lines that start
/// with '#' are comments. A line that is wrong, or that has the name or the hash of one above it, is a fault;
/// it stays in the text, so that nothing is lost when the table is changed and written again.
class TokenLines {
 public:
  explicit TokenLines(std::string_view text);

  /// In their order.
  std::vector<TokenEntry> entries() const;
  std::vector<TokenFault> faults() const;
  std::optional<TokenEntry> find(std::string_view name) const;

  /// Whether a line has that name, be it one that counts or one that repeats another's token.
  bool hasLineOf(std::string_view name) const;

  void add(const TokenEntry& entry);

  /// Takes away all lines of that name, and those of the same token. False when there was no entry of it.
  bool remove(std::string_view name);

  std::string text() const;

 private:
  struct Line {
    std::string text;
    std::optional<TokenEntry> entry;  ///< What it says, also where that does not count.
    std::string fault;                ///< Why it does not count; otherwise empty.
  };

  static Line lineOf(std::string_view text);
  void judgeRepetitions();

  std::vector<Line> m_lines;
};

}  // namespace host

#endif
