#ifndef MIRN_HOST_IDENTITY_TOKEN_STORE_H
#define MIRN_HOST_IDENTITY_TOKEN_STORE_H

#include <chrono>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "identity/steady_clock.h"
#include "identity/token_lines.h"

namespace host {

/// Takes lines for whoever runs the host, without an end of line.
using ReportLine = std::function<void(const std::string&)>;

/// The tokens that let somebody in, as the file of tokens has them: a change of it counts after
/// kRenewal at the latest, without a thread. Safe from any thread.
class TokenStore {
 public:
  /// How long the file is not looked at again.
  static constexpr std::chrono::milliseconds kRenewal{1000};

  /// Reads the file `path`. Faults of it, now and later, go to `report`, each once for as long as the file
  /// stays the same. Raises `std::runtime_error` on a file that is there and cannot be read, or that others
  /// may reach; one that is not there holds no tokens.
  TokenStore(std::filesystem::path path, SteadyClock clock, ReportLine report);

  /// The entry of the token that has this hash, found in a time that tells nothing of the others.
  std::optional<TokenEntry> find(std::string_view hash);

  /// Looks at the file at once. One that cannot be read, or that others may reach, leaves the tokens as they
  /// were; one that has gone takes them all away.
  void reload();

 private:
  void renew();
  void take(const std::string& text);
  void tell(const std::string& failure);

  const std::filesystem::path m_path;
  const SteadyClock m_clock;
  const ReportLine m_report;
  std::mutex m_mutex;
  std::chrono::steady_clock::time_point m_looked;
  std::string m_text;
  std::string m_failure;  ///< Of the last look; empty when it went well.
  std::vector<TokenEntry> m_entries;
};

}  // namespace host

#endif
