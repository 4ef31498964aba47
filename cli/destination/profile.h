#ifndef MIRN_CLI_DESTINATION_PROFILE_H
#define MIRN_CLI_DESTINATION_PROFILE_H

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "destination/destination.h"

namespace mirnctl {

/// The profile that is taken where none is named.
inline constexpr char kUsualProfile[] = "default";

/// The name of a host's Unix socket.
inline constexpr char kSocketFile[] = "host.sock";

/// What the command line says of where to go; empty: nothing.
struct Directions {
  std::string host;
  std::string tokenFile;
  std::string profile;
  std::string caFile;
  std::string bundle{};  ///< Nothing else is asked where there is one.
};

/// What the process was started with. One for tests.
struct Surroundings {
  std::optional<std::string> host;       ///< MIRN_HOST
  std::optional<std::string> tokenFile;  ///< MIRN_TOKEN_FILE
  std::filesystem::path configuration;   ///< The file of profiles.
  std::filesystem::path state;           ///< Where a host that this user runs keeps its files.
  std::filesystem::path userSocket;      ///< Of a host that this user runs; empty: none.
  std::filesystem::path systemSocket;    ///< Of the machine's service; empty: none.
};

/// One source a system.
Surroundings surroundings();

/// The first that says so: `directions`, the environment, the profile that they or "default" name, a Unix
/// socket that is there, 127.0.0.1:8080. A token is needed for TCP only and is looked for in the same order.
/// Raises `Failure`.
Destination destinationOf(const Directions& directions, const Surroundings& surroundings);

/// The same but for the token, which is empty; a profile that is not there yet counts as none.
Destination destinationWithoutToken(const Directions& directions, const Surroundings& surroundings);

/// The names of the profiles that there are. Raises `Failure` for a file that cannot be understood.
std::vector<std::string> profileNames(const Surroundings& surroundings);

}  // namespace mirnctl

#endif
