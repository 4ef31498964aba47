#ifndef MIRN_HOST_IDENTITY_TOKEN_FILE_H
#define MIRN_HOST_IDENTITY_TOKEN_FILE_H

#include <string>

namespace host {

/// Where the token is kept unless told otherwise: below the user's folder for what programs leave there; one
/// source a system. Paths are UTF-8. Raises `std::runtime_error` when the user has no such folder.
std::string defaultTokenFile();

/// That place in words for a user, such as "mirn/token in $XDG_STATE_HOME".
std::string defaultTokenFileText();

/// The token in the file `path`. Without such a file one is made, with a new token and for its owner's eyes
/// only, together with missing directories; of several hosts that start at once, all get the same token.
/// Raises `std::runtime_error` on a file that cannot be read or made, that others may read, or that holds
/// no token.
std::string loadOrCreateToken(const std::string& path);

}  // namespace host

#endif
