#ifndef MIRN_HOST_IDENTITY_TOKEN_TABLE_H
#define MIRN_HOST_IDENTITY_TOKEN_TABLE_H

#include <filesystem>
#include <optional>
#include <string>

#include "identity/role.h"
#include "identity/token_file.h"
#include "identity/token_lines.h"
#include "tick_clock.h"

namespace host {

/// The name of the token that the first start makes.
extern const char* const kFirstToken;

/// The file of tokens as those change it who run the host: whole or not at all, one after the other, also
/// from several processes and threads at once; a running host sees it (token_store.h). It stands beside the
/// file of the first token, whose name it has with an "s" behind it.
///
/// All raise `std::runtime_error` that names the file and the reason.
class TokenTable {
 public:
  /// `tokenFile`, as UTF-8, is where the first token is kept for its owner.
  explicit TokenTable(const std::string& tokenFile, TickClock clock = currentTicks);

  const std::filesystem::path& path() const { return m_path; }

  /// What is there now; nothing when there is no file.
  TokenLines read() const;

  /// Makes a token and returns it: it is kept nowhere else. The name must be new, and not kFirstToken. Where
  /// there is no table yet, the first token is made, too.
  std::string add(const std::string& name, Role role) const;

  /// Lets that token in no longer. The first one's own file goes as well, so that it is not taken for one
  /// that is good.
  void revoke(const std::string& name) const;

  /// What a start needs: without a table, the first token is made or taken from its file, and becomes the
  /// table's line kFirstToken, which administers. With one, the line follows the file, for its owner may have
  /// put another token there; nothing comes back that was revoked. Returns the first token where it is good.
  std::optional<std::string> claimFirst(const Pause& pause) const;

 private:
  std::optional<std::string> claim(const Pause& pause) const;
  std::optional<std::string> content() const;
  void write(const TokenLines& lines) const;
  TokenEntry entryOf(const std::string& name, Role role, const std::string& token) const;
  std::runtime_error failure(const std::string& reason) const;
  template <class Action>
  auto alone(Action action) const;

  const std::string m_tokenFile;
  const std::filesystem::path m_path;
  const TickClock m_clock;
};

}  // namespace host

#endif
